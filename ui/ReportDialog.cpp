#include "ui/ReportDialog.h"

#include "ui/DialogLayoutBuilder.h"
#include "ui/VDialogView.h"

namespace rc = ReportControl;

namespace {

constexpr int kDescriptionLabel = -1;
constexpr int kDetailLabel = -2;

DialogLayout ReportLayout(std::string_view caption)
{
    DialogLayoutBuilder b(0, std::string(caption));
    b.Section("", 0);
    b.Add(rc::Entries, ControlKind::Table, "").Columns = {"Type", "Information"};
    b.NextRow().Add(kDescriptionLabel, ControlKind::Label, "Description");
    b.NextRow().Add(rc::Description, ControlKind::MultiLine, "");
    b.NextRow().Add(kDetailLabel, ControlKind::Label, "Detail");
    b.NextRow().Add(rc::Detail, ControlKind::MultiLine, "");
    b.NextRow().Add(kIdOk, ControlKind::Button, "OK");
    return b.Build();
}

Cell TypeCell(int32_t severity)
{
    switch (severity) {
    case SeverityInformation:
        return {"Info", {0, 150, 0}, 0};
    case SeverityWarning:
        return {"Warning", {0, 0, 0}, 0};
    default:
        return {"Error", {255, 0, 0}, 0};
    }
}

} // namespace

ReportDialog::ReportDialog(std::string_view caption, std::vector<VReportEntry> entries)
    : Dialog(ReportLayout(caption))
    , m_entries(std::move(entries))
{
}

void ReportDialog::Open()
{
    ControlState& table = (*this)[rc::Entries];
    for (const VReportEntry& entry : m_entries)
        table.Rows.push_back({TypeCell(entry.Severity), Cell {entry.Title, {0, 0, 0}, 0}});
    SetFocus(rc::Entries);
}

void ReportDialog::Command(int id)
{
    if (id == kIdOk || id == kIdCancel) {
        End(id == kIdOk ? 1 : 0);
    } else if (id == rc::Entries) {
        const int selection = (*this)[rc::Entries].Selection;
        const bool selected = selection >= 0 && selection < static_cast<int>(m_entries.size());
        SetText(rc::Description, selected ? m_entries[static_cast<size_t>(selection)].Explanation : std::string());
        SetText(rc::Detail, selected ? m_entries[static_cast<size_t>(selection)].Detail : std::string());
    }
}

void DialogReportView::ShowReport(std::string_view caption, const std::vector<VReportEntry>& entries)
{
    ReportDialog dialog(caption, entries);
    RunDialog(dialog, &m_view, UnseenDialog::Cancels);
}

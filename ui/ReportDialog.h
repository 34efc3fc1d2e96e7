#pragma once
// The issue report at the end of an interactive export: one row per entry with its type and
// title; the selected entry's explanation and detail below.

#include "report/VReportEntry.h"
#include "report/VReportView.h"
#include "ui/Dialog.h"

#include <string_view>
#include <vector>

namespace ReportControl {
inline constexpr int Entries = 1000;
inline constexpr int Description = 1001;
inline constexpr int Detail = 1002;
} // namespace ReportControl

class ReportDialog final : public Dialog {
public:
    ReportDialog(std::string_view caption, std::vector<VReportEntry> entries);

    void Open() override;
    void Command(int id) override;

private:
    std::vector<VReportEntry> m_entries;
};

class VDialogView;

// The report as the dialog above, shown in a dialog view.
class DialogReportView final : public VReportView {
public:
    explicit DialogReportView(VDialogView& view)
        : m_view(view)
    {
    }
    void ShowReport(std::string_view caption, const std::vector<VReportEntry>& entries) override;

private:
    VDialogView& m_view;
};

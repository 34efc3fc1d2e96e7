#include "report/VReport.h"

#include <algorithm>

#include "base/FileSystem.h"
#include "report/ReportText.h"
#include "report/VReportView.h"

void VReport::AddIssue(uint32_t kind, std::string_view detail)
{
    m_issues.push_back(VReportIssue { kind, std::string(detail) });
}

void VReport::AddEntry(VReportEntry entry)
{
    m_readyEntries.push_back(std::move(entry));
}

void VReport::Finalize(int32_t minimumSeverity)
{
    // Stable, so that the details of one kind keep the order in which they were raised.
    std::stable_sort(m_issues.begin(), m_issues.end(),
                     [](const VReportIssue& a, const VReportIssue& b) { return a.Kind < b.Kind; });

    auto run = m_issues.begin();
    while (run != m_issues.end()) {
        const uint32_t kind = run->Kind;
        std::string data;
        auto next = run;
        for (; next != m_issues.end() && next->Kind == kind; ++next) {
            if (next->Detail.empty())
                continue;
            data += next->Detail;
            data += "\r\n";
        }

        VReportEntry entry;
        FillInReportMessage(kind, data, entry.Title, entry.Detail, entry.Explanation, entry.Severity);
        if (entry.Severity >= minimumSeverity)
            m_entries.push_back(std::move(entry));
        run = next;
    }
    for (VReportEntry& entry : m_readyEntries)
        if (entry.Severity >= minimumSeverity)
            m_entries.push_back(std::move(entry));
    m_readyEntries.clear();
}

void VReport::DropEntriesBelow(int32_t minimumSeverity)
{
    std::erase_if(m_entries, [&](const VReportEntry& entry) { return entry.Severity < minimumSeverity; });
}

void VReport::ShowReportDialog(VReportView& view, std::string_view caption) const
{
    if (!m_entries.empty())
        view.ShowReport(caption, m_entries);
}

bool VReport::WriteReportToFile(std::string_view path, std::string_view header) const
{
    if (m_entries.empty())
        return true;
    return WriteFileAtomically(path, ReportText(m_entries, header));
}

void VReport::Clear()
{
    m_entries.clear();
    m_issues.clear();
    m_readyEntries.clear();
}

#pragma once
// The issues met during one export. Any part of the exporter raises an issue with AddIssue; at the
// end of the export Finalize condenses them into one entry per kind, which is then shown or filed.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "report/VReportEntry.h"

class VReportView;

class VReport {
public:
    virtual ~VReport() = default;

    // Never stops the caller; an empty detail adds nothing to the entry's list.
    void AddIssue(uint32_t kind, std::string_view detail = {});
    // An issue that brings its own title, explanation and detail rather than a numbered kind
    // (the visibility builder's portal problems). Finalize keeps it after the numbered kinds,
    // in raising order, when its severity reaches the minimum.
    void AddEntry(VReportEntry entry);

    // Sorts the issues by kind and appends one entry per kind whose severity is at least
    // minimumSeverity. Calling it twice without Clear appends the entries twice.
    void Finalize(int32_t minimumSeverity);

    // Drops the finalised entries whose severity is below minimumSeverity, keeping the others' order,
    // so that one Finalize serves both the whole report and a part of it.
    void DropEntriesBelow(int32_t minimumSeverity);

    // Does nothing while there are no entries.
    void ShowReportDialog(VReportView& view, std::string_view caption) const;

    // Writes the entries as in "ErrLog.txt", replacing an existing file. With no entries nothing is
    // written and true is answered; false when the file could not be written.
    bool WriteReportToFile(std::string_view path, std::string_view header = {}) const;

    void Clear();

    const std::vector<VReportEntry>& Entries() const { return m_entries; }
    const std::vector<VReportIssue>& Issues() const { return m_issues; }

protected:
    // Fills the four outputs for one kind; data holds the kind's non-empty details, each followed
    // by "\r\n". The outputs arrive empty (severity 0).
    virtual void FillInReportMessage(uint32_t kind, const std::string& data, std::string& title,
                                     std::string& detail, std::string& explanation, int32_t& severity) = 0;

private:
    std::vector<VReportEntry> m_entries;
    std::vector<VReportIssue> m_issues;
    std::vector<VReportEntry> m_readyEntries;
};

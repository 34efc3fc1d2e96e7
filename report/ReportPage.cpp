#include "report/ReportPage.h"

#include "base/Number.h"
#include "base/TextUtil.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr const char* Style = R"(body{font:14px/1.4 sans-serif;margin:24px;color:#222;background:#fafafa}
h1{font-size:20px}h2{font-size:16px;margin-top:28px;border-bottom:1px solid #ccc}
table{border-collapse:collapse}td,th{padding:3px 10px;text-align:left;border-bottom:1px solid #e4e4e4}
td.n{text-align:right}pre{background:#fff;border:1px solid #ddd;padding:8px;overflow:auto}
.material{display:inline-block;width:150px;margin:6px;vertical-align:top;font-size:12px;word-wrap:break-word}
.material img,.swatch{width:128px;height:128px;border:1px solid #999;image-rendering:pixelated;display:block}
.issue{background:#fff;border-left:4px solid #c80;padding:6px 12px;margin:10px 0}.issue.error{border-color:#c00}
.issue.information{border-color:#096}
.preview{border:1px solid #999})";

std::string Escaped(std::string_view text)
{
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&': escaped += "&amp;"; break;
        case '<': escaped += "&lt;"; break;
        case '>': escaped += "&gt;"; break;
        case '"': escaped += "&quot;"; break;
        case '\r': break;
        default: escaped += c;
        }
    }
    return escaped;
}

std::string Base64(std::string_view bytes)
{
    static constexpr char Digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (size_t at = 0; at < bytes.size(); at += 3) {
        uint32_t group = static_cast<uint32_t>(static_cast<uint8_t>(bytes[at])) << 16;
        if (at + 1 < bytes.size())
            group |= static_cast<uint32_t>(static_cast<uint8_t>(bytes[at + 1])) << 8;
        if (at + 2 < bytes.size())
            group |= static_cast<uint8_t>(bytes[at + 2]);
        text += Digits[(group >> 18) & 63];
        text += Digits[(group >> 12) & 63];
        text += at + 1 < bytes.size() ? Digits[(group >> 6) & 63] : '=';
        text += at + 2 < bytes.size() ? Digits[group & 63] : '=';
    }
    return text;
}

std::string Picture(std::string_view png, std::string_view alt, std::string_view cssClass)
{
    return "<img class=\"" + std::string(cssClass) + "\" alt=\"" + Escaped(alt) + "\" src=\"data:image/png;base64," +
           Base64(png) + "\"/>";
}

const char* SeverityName(int32_t severity)
{
    return severity >= SeverityError ? "error" : severity == SeverityWarning ? "warning" : "information";
}

void AddIssue(const VReportEntry& entry, std::string& html)
{
    html += Format("<div class=\"issue %s\"><b>%s</b>: %s\n<p>%s</p>\n", SeverityName(entry.Severity),
                   SeverityName(entry.Severity), Escaped(entry.Title).c_str(), Escaped(entry.Explanation).c_str());
    // A line ending in a colon introduces a list; every other line names a node, a file or a
    // value the issue is about.
    std::string items;
    for (std::string_view rest = entry.Detail; !rest.empty();) {
        const size_t end = rest.find('\n');
        const std::string_view line = TrimSpaces(rest.substr(0, end));
        if (line.ends_with(':'))
            html += "<p>" + Escaped(line) + "</p>\n";
        else if (!line.empty())
            items += "<li>" + Escaped(line) + "</li>";
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    }
    if (!items.empty())
        html += "<ul>" + items + "</ul>\n";
    html += "</div>\n";
}

// Errors first, then warnings, then information; within a group in the report's own order.
void AddIssues(const std::vector<VReportEntry>& entries, std::string& html)
{
    html += Format("<h2>Issues (%zu)</h2>\n", entries.size());
    if (entries.empty())
        html += "<p>None.</p>\n";
    struct Group {
        const char* Heading;
        bool (*Holds)(int32_t severity);
    };
    const Group groups[] = {
        {"Errors", [](int32_t severity) { return severity >= SeverityError; }},
        {"Warnings", [](int32_t severity) { return severity == SeverityWarning; }},
        {"Information", [](int32_t severity) { return severity < SeverityWarning; }},
    };
    for (const Group& group : groups) {
        const auto count = std::count_if(entries.begin(), entries.end(),
                                         [&](const VReportEntry& entry) { return group.Holds(entry.Severity); });
        if (count == 0)
            continue;
        html += Format("<h3>%s (%td)</h3>\n", group.Heading, count);
        for (const VReportEntry& entry : entries)
            if (group.Holds(entry.Severity))
                AddIssue(entry, html);
    }
}

} // namespace

std::string ReportPageHtml(const VReportPage& page)
{
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"/>\n<title>Export report: " +
                       Escaped(page.Target) + "</title>\n<style>" + Style + "</style></head><body>\n";
    html += "<h1>Export report</h1>\n<table><tr><th>Scene</th><td>" + Escaped(page.Scene) + "</td></tr><tr><th>Asset</th><td>" +
            Escaped(page.Target) + "</td></tr></table>\n";

    html += "<h2>Preview</h2>\n";
    html += page.PreviewPng.empty() ? "<p>The asset could not be drawn.</p>\n" : Picture(page.PreviewPng, "Preview of the asset", "preview") + "\n";

    AddIssues(page.Entries, html);

    html += "<h2>Counts</h2>\n<table>";
    for (const auto& [name, count] : page.Counts)
        html += "<tr><th>" + Escaped(name) + "</th><td class=\"n\">" + FormatInt(count) + "</td></tr>";
    html += "</table>\n";

    html += "<h2>Materials</h2>\n<div>";
    for (const VReportPageMaterial& material : page.Materials) {
        html += "<div class=\"material\">";
        if (!material.TexturePng.empty())
            html += Picture(material.TexturePng, material.Texture, "texture");
        else
            html += Format("<div class=\"swatch\" style=\"background:rgb(%d,%d,%d)\"></div>", material.Colour[0],
                           material.Colour[1], material.Colour[2]);
        html += "<b>" + Escaped(material.Name) + "</b><br/>" +
                (material.Texture.empty() ? std::string("no texture") : Escaped(material.Texture)) + "</div>";
    }
    html += "</div>\n";

    html += "<h2>Phases</h2>\n<table><tr><th>Phase</th><th>Seconds</th></tr>";
    for (const VPhaseTime& phase : page.Phases)
        html += "<tr><td>" + Escaped(phase.Name) + "</td><td class=\"n\">" + FormatFloat(phase.Seconds, 2) + "</td></tr>";
    html += "</table>\n";

    html += "<h2>Settings</h2>\n<pre>" + Escaped(page.Settings) + "</pre>\n</body></html>\n";
    return html;
}

#pragma once
// The export report page ("report.html" beside the log and ErrLog.txt): one self-contained HTML file
// (styles inline, pictures as data URLs, no script, nothing fetched) with the export's settings, the
// time of each phase, the counts, each material with its texture, every issue of the report (errors,
// warnings and information) with its explanation and the nodes it names, and a picture of the asset.

#include "report/Progress.h"
#include "report/VReportEntry.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

struct VReportPageMaterial {
    std::string Name;
    // As a person reads it; empty for a material without a texture.
    std::string Texture;
    // A PNG of the texture; empty when it was not found or could not be decoded.
    std::string TexturePng;
    std::array<uint8_t, 3> Colour {};
};

struct VReportPage {
    // Paths as a person reads them.
    std::string Scene;
    std::string Target;
    // The option block as stored with the target ("// Key : Value" lines).
    std::string Settings;
    std::vector<VPhaseTime> Phases;
    std::vector<std::pair<std::string, long long>> Counts;
    std::vector<VReportPageMaterial> Materials;
    std::vector<VReportEntry> Entries;
    // A PNG of the asset; empty when it could not be drawn.
    std::string PreviewPng;
};

std::string ReportPageHtml(const VReportPage& page);

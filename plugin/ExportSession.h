#pragma once
// The one record of the export under way: where it goes, how it was asked for and the option
// record that steers it. Module-wide (TheExportSession); every Init of a format rebinds it.

#include "harvest/HarvestState.h"
#include "model/VMBoundingBox.h"
#include "report/KestrelReportMessage.h"
#include "settings/VAnimationTable.h"
#include "settings/VExportOptions.h"

#include <string>

class VExportFormat;

struct ExportSession {
    // Non-owning: the format objects live as long as the module.
    VExportFormat* Format = nullptr;
    int FormatKind = 0;

    std::string TargetFile;
    // Every directory ends with a backslash; the project ones are empty when the target lies in
    // no project.
    std::string TargetDirectory;
    std::string ProjectFile;
    std::string ProjectDirectory;
    std::string TextureDirectory;
    std::string BaseDirectory;

    bool NoPrompt = false;
    bool SelectionOnly = false;

    VExportOptions Options;
    VAnimationTable Animations;

    // Centimetres per Maya UI distance unit.
    float UnitFactor = 1.0f;
    VMBoundingBox SceneBox;
    // What harvesting needs from the export and its per-export helpers: the precalculation
    // statistics, the mesh node table, the material cache and the texture name table.
    HarvestState Harvest {HarvestParameters {}, ModuleReport()};
    // Where Maya's time goes back to after an export: the bind pose time of the last model export.
    double RestoreFrame = 0.0;
};

struct ApplicationSettings;

// Binds the session to the format for a new export: the options take their defaults (the
// format's and those the user chose in the application settings), the animation table and the
// harvesting helpers are emptied, and the precalculation counts the scene.
void InitForExport(ExportSession& session, VExportFormat& format, bool selectionOnly,
                   const ApplicationSettings& applicationSettings);

// Finds the project enclosing the target directory when the format uses projects. Answers false
// only for a format that requires a project and finds none; issue 10 is then raised and the
// report shown at once.
bool FindProjectForTarget(ExportSession& session, const VExportFormat& format);

#include "settings/ConfirmApplicationSettings.h"

#include "report/DebugFile.h"

bool ConfirmApplicationSettings(const ApplicationSettingsChoices& choices, ApplicationSettings& settings,
                                VSettingsStore& store)
{
    const bool wasDebugPrinting = settings.DebugPrint != 0;
    settings.ToolTips = choices.ToolTips ? 1 : 0;
    settings.WarnPolyCount = choices.WarnPolyCount;
    settings.DebugPrint = choices.DebugPrint ? 1 : 0;

    if (!choices.DebugPrint) {
        DebugPrint("Debug file option cancelled...\r\n");
        CloseDebugFile();
    } else if (!wasDebugPrinting) {
        OpenDebugFile("debug.txt", DebugFileFlushEachLine);
        DebugPrint("Opening late debug file...\r\n");
    }
    return SaveApplicationSettings(store, settings);
}

// Draws each dialog on the offscreen platform into FOLDER/<name>.png, for the pictures in
// docs/ui.md: dialog_pictures FOLDER

#include "ui/qt/QtDialogWindow.h"

#include "base/Path.h"
#include "report/VReportEntry.h"
#include "settings/ApplicationSettings.h"
#include "settings/IniSettingsStore.h"
#include "settings/VAnimationTable.h"
#include "settings/VExportOptions.h"
#include "ui/AboutDialog.h"
#include "ui/AnimationEntryDialog.h"
#include "ui/AnimationListDialog.h"
#include "ui/ApplicationSettingsDialog.h"
#include "ui/BatchMessageBox.h"
#include "ui/BitmaskDialog.h"
#include "ui/ExportOptionsDialog.h"
#include "ui/NodePropertiesDialog.h"
#include "ui/ReportDialog.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>

#include <cstdio>

namespace {

bool Draw(Dialog& dialog, const QString& folder, const char* name)
{
    dialog.Open();
    QtDialogWindow window(dialog, nullptr);
    window.show();
    QApplication::processEvents();
    const QString file = QDir(folder).filePath(QString(name) + ".png");
    if (window.grab().save(file))
        return true;
    std::fprintf(stderr, "dialog_pictures: cannot write %s\n", file.toLocal8Bit().constData());
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: dialog_pictures FOLDER\n", stderr);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QString folder = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(folder);

    BatchMessageBox boxes(stdout);
    ApplicationSettings settings;
    IniSettingsStore store(FromNativePath(QDir(folder).filePath("settings.ini").toStdString()));
    VAnimationTable animations;
    VAnimationDescription walk;
    walk.Name = "walk";
    walk.Type = kAnimTypeBone;
    walk.Looped = 1;
    animations.Add(walk);
    VAnimationDescription blink;
    blink.Name = "blink";
    animations.Add(blink);

    bool drawn = true;
    for (const bool model : {true, false}) {
        for (const bool expanded : {true, false}) {
            OptionsDialogContext context;
            context.FormatKind = model ? kFormatKindModel : kFormatKindStatic;
            context.StaticGeometryControls = !model;
            context.TargetFile = model ? "D:\\game\\characters\\hero.model" : "D:\\game\\levels\\town.qmesh";
            context.TargetDirectory = model ? "D:\\game\\characters\\" : "D:\\game\\levels\\";
            context.ProjectFile = "D:\\game\\game.project";
            context.ProjectDirectory = "D:\\game\\";
            context.RootBones = {"hips"};
            VExportOptions options;
            SetExportOptionDefaults(options, ExportOptionDefaults {.FormatKind = context.FormatKind});
            options.AdvancedMenu = expanded;
            ExportOptionsDialog dialog(context, &options, animations, {boxes, nullptr, settings, store});
            const std::string name = std::string(model ? "model" : "mesh") + "-options" + (expanded ? "" : "-collapsed");
            drawn = Draw(dialog, folder, name.c_str()) && drawn;
        }
    }
    AnimationListDialog list(animations, boxes, nullptr, true);
    drawn = Draw(list, folder, "animation-list") && drawn;
    AnimationEntryDialog entry(AnimationEntryDialog::Purpose::Edit, walk, boxes, nullptr, true);
    drawn = Draw(entry, folder, "animation-entry") && drawn;
    NodeProperties properties {"pCube1"};
    NodePropertiesDialog node(properties, "", boxes, nullptr);
    drawn = Draw(node, folder, "node-properties") && drawn;
    uint32_t bits = 0x15;
    BitmaskDialog bitmask(bits, {"Player", "Camera", "Vehicles", "Projectiles", "Water"});
    drawn = Draw(bitmask, folder, "bitmask") && drawn;
    ApplicationSettingsDialog applicationSettings(settings, store);
    drawn = Draw(applicationSettings, folder, "application-settings") && drawn;
    ReportDialog report("Kestrel: Export report",
                        {{"Export finished", "The export finished.", "", SeverityInformation},
                         {"Texture not found", "A material names a texture file that does not exist.",
                          "D:\\game\\textures\\brick.tga", SeverityWarning}});
    drawn = Draw(report, folder, "report") && drawn;
    AboutDialog about;
    drawn = Draw(about, folder, "about") && drawn;
    QFile::remove(QDir(folder).filePath("settings.ini"));
    return drawn ? 0 : 1;
}

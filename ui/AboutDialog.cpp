#include "ui/AboutDialog.h"

#include "base/Version.h"
#include "ui/DialogLayoutBuilder.h"

namespace {

DialogLayout AboutLayout()
{
    DialogLayoutBuilder b(102, "About Kestrel");
    b.Section("", 0);
    b.Add(kAboutVersionText, ControlKind::Label, std::string("Kestrel ") + ExporterVersionText);
    b.NextRow().Add(kIdOk, ControlKind::Button, "OK");
    return b.Build();
}

} // namespace

AboutDialog::AboutDialog()
    : Dialog(AboutLayout())
{
}

void AboutDialog::Command(int id)
{
    if (id == kIdOk || id == kIdCancel)
        End(id == kIdOk ? 1 : 0);
}

#include "plugin/CreateProj.h"

#include "base/TextUtil.h"
#include "plugin/PluginModule.h"
#include "settings/CreateProject.h"
#include "ui/VMessageBox.h"

#include <algorithm>
#include <string>

void* createProj::creator()
{
    return new createProj;
}

MStatus createProj::reader(const MFileObject& /*file*/, const MString& /*optionsString*/, FileAccessMode /*mode*/)
{
    return MS::kFailure;
}

MStatus createProj::writer(const MFileObject& file, const MString& /*optionsString*/, FileAccessMode /*mode*/)
{
    const std::string fullName = file.fullName().asChar();
    std::string path = fullName;
    std::replace(path.begin(), path.end(), '/', '\\');
    const bool created = CreateProject(path);

    VMessageBoxRequest request;
    request.Caption = "Finished";
    request.Text = Format(created ? "Tessor project '%s' created" : "Tessor project '%s' create failed",
                          fullName.c_str());
    request.Owner = VMessageBoxOwner::None;
    TheMessageBox().Show(request);
    return created ? MS::kSuccess : MS::kFailure;
}

MPxFileTranslator::MFileKind createProj::identifyFile(const MFileObject& file, const char* /*buffer*/,
                                                     short /*size*/) const
{
    return EndsWithNoCase(file.name().asChar(), ".project") ? kIsMyFileType : kNotMyFileType;
}

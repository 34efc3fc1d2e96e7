#pragma once
// The file translator of one export format: Maya's export-all and export-selection requests
// enter the exporter here.

#include <maya/MFileObject.h>
#include <maya/MPxFileTranslator.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <string>
#include <string_view>

class VExportFormat;

class ImportExportScene : public MPxFileTranslator {
public:
    explicit ImportExportScene(VExportFormat* format);

    MStatus reader(const MFileObject& file, const MString& optionsString, FileAccessMode mode) override;
    MStatus writer(const MFileObject& file, const MString& optionsString, FileAccessMode mode) override;
    bool haveReadMethod() const override;
    bool haveWriteMethod() const override { return true; }
    MString defaultExtension() const override;
    MString filter() const override;
    MFileKind identifyFile(const MFileObject& file, const char* buffer, short size) const override;

private:
    VExportFormat* m_format;
};

// The path with backslashes and a doubled extension removed ("a.model.model" becomes "a.model").
std::string ExportTargetPath(std::string_view fullName);

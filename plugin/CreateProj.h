#pragma once
// The "Tessor_Project" translator: "exporting" to a .project file creates an editor project.

#include <maya/MFileObject.h>
#include <maya/MPxFileTranslator.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

class createProj : public MPxFileTranslator {
public:
    MStatus reader(const MFileObject& file, const MString& optionsString, FileAccessMode mode) override;
    MStatus writer(const MFileObject& file, const MString& optionsString, FileAccessMode mode) override;
    bool haveReadMethod() const override { return false; }
    bool haveWriteMethod() const override { return true; }
    MString defaultExtension() const override { return "project"; }
    MString filter() const override { return "*.project"; }
    MFileKind identifyFile(const MFileObject& file, const char* buffer, short size) const override;

    static void* creator();
};

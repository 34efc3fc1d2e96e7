#pragma once

#include <maya/MFileObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

class MPxFileTranslator {
public:
  enum FileAccessMode { kUnknownAccessMode, kOpenAccessMode, kReferenceAccessMode, kImportAccessMode,
                        kSaveAccessMode, kExportAccessMode, kExportActiveAccessMode };
  enum MFileKind { kIsMyFileType, kCouldBeMyFileType, kNotMyFileType };

  MPxFileTranslator() = default;
  virtual ~MPxFileTranslator() = default;

  virtual MStatus reader(const MFileObject& file, const MString& optionsString, FileAccessMode mode);
  virtual MStatus writer(const MFileObject& file, const MString& optionsString, FileAccessMode mode);
  virtual bool haveReadMethod() const { return false; }
  virtual bool haveWriteMethod() const { return false; }
  virtual bool haveNamespaceSupport() const { return false; }
  virtual bool haveReferenceMethod() const { return false; }
  virtual MString defaultExtension() const { return MString(); }
  virtual MString filter() const { return "*.*"; }
  virtual bool canBeOpened() const { return true; }
  virtual MFileKind identifyFile(const MFileObject& file, const char* buffer, short size) const;

  static FileAccessMode fileAccessMode();
};

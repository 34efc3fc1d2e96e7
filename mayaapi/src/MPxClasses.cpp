#include <maya/MArgList.h>
#include <maya/MFileObject.h>
#include <maya/MGlobal.h>
#include <maya/MPxCommand.h>
#include <maya/MPxFileTranslator.h>

#include "PluginRegistry.h"

#include <sys/stat.h>

MStatus MPxFileTranslator::reader(const MFileObject&, const MString&, FileAccessMode) { return MS::kFailure; }

MStatus MPxFileTranslator::writer(const MFileObject&, const MString&, FileAccessMode) { return MS::kFailure; }

MPxFileTranslator::MFileKind MPxFileTranslator::identifyFile(const MFileObject&, const char*, short) const
{
  return kNotMyFileType;
}

MPxFileTranslator::FileAccessMode MPxFileTranslator::fileAccessMode() { return standin::Registry().accessMode; }

MStatus MPxCommand::doIt(const MArgList&) { return MStatus(MS::kFailure, "Command has no doIt"); }

void MPxCommand::displayInfo(const MString& text) { MGlobal::displayInfo(text); }
void MPxCommand::displayWarning(const MString& text) { MGlobal::displayWarning(text); }
void MPxCommand::displayError(const MString& text) { MGlobal::displayError(text); }
void MPxCommand::clearResult() { standin::Registry().commandResult.clear(); }
void MPxCommand::setResult(int value) { standin::Registry().commandResult = std::to_string(value); }
void MPxCommand::setResult(double value) { standin::Registry().commandResult = MString().set(value).asChar(); }
void MPxCommand::setResult(bool value) { standin::Registry().commandResult.assign(1, value ? '1' : '0'); }
void MPxCommand::setResult(const MString& value) { standin::Registry().commandResult = value.asChar(); }

unsigned int MArgList::length(MStatus* status) const
{
  if (status)
    *status = MS::kSuccess;
  return static_cast<unsigned int>(m_args.size());
}

MString MArgList::asString(unsigned int index, MStatus* status) const
{
  const bool ok = index < m_args.size();
  if (status)
    *status = ok ? MS::kSuccess : MS::kInvalidParameter;
  return ok ? m_args[index] : MString();
}

int MArgList::asInt(unsigned int index, MStatus* status) const
{
  const MString text = asString(index, status);
  if (status && *status && !text.isInt())
    *status = MS::kInvalidParameter;
  return text.asInt();
}

double MArgList::asDouble(unsigned int index, MStatus* status) const
{
  const MString text = asString(index, status);
  if (status && *status && !text.isDouble())
    *status = MS::kInvalidParameter;
  return text.asDouble();
}

bool MArgList::asBool(unsigned int index, MStatus* status) const
{
  const MString text = asString(index, status);
  return text == "true" || text == "on" || text == "yes" || (text.isInt() && text.asInt() != 0);
}

MStatus MArgList::addArg(const MString& arg)
{
  m_args.push_back(arg);
  return MS::kSuccess;
}

MStatus MArgList::addArg(int arg) { return addArg(MString(std::to_string(arg))); }

MStatus MArgList::addArg(double arg) { return addArg(MString().set(arg)); }

MStatus MFileObject::setRawFullName(const MString& fullName)
{
  m_fullName = fullName;
  return MS::kSuccess;
}

MString MFileObject::name() const
{
  const int slash = m_fullName.rindex('/');
  return slash < 0 ? m_fullName : m_fullName.substring(slash + 1, static_cast<int>(m_fullName.length()) - 1);
}

MString MFileObject::path() const
{
  const int slash = m_fullName.rindex('/');
  return slash < 0 ? MString() : m_fullName.substring(0, slash);
}

bool MFileObject::exists() const
{
  struct stat info {};
  return !m_fullName.isEmpty() && stat(m_fullName.asChar(), &info) == 0;
}

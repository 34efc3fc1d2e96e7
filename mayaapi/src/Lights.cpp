#include <maya/MFnAmbientLight.h>
#include <maya/MFnDirectionalLight.h>
#include <maya/MFnLight.h>
#include <maya/MFnNonAmbientLight.h>
#include <maya/MFnNonExtendedLight.h>
#include <maya/MFnPointLight.h>
#include <maya/MFnSpotLight.h>

namespace {

template <typename Fn, typename Target>
void Attach(Fn& fn, const Target& target, MStatus* status)
{
  const MStatus result = fn.setObject(target);
  if (status)
    *status = result;
}

}

MFnLight::MFnLight(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnLight::MFnLight(const MDagPath& path, MStatus* status) { Attach(*this, path, status); }
MFnNonAmbientLight::MFnNonAmbientLight(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnNonAmbientLight::MFnNonAmbientLight(const MDagPath& path, MStatus* status) { Attach(*this, path, status); }
MFnNonExtendedLight::MFnNonExtendedLight(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnNonExtendedLight::MFnNonExtendedLight(const MDagPath& path, MStatus* status) { Attach(*this, path, status); }
MFnPointLight::MFnPointLight(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnPointLight::MFnPointLight(const MDagPath& path, MStatus* status) { Attach(*this, path, status); }
MFnDirectionalLight::MFnDirectionalLight(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnDirectionalLight::MFnDirectionalLight(const MDagPath& path, MStatus* status) { Attach(*this, path, status); }
MFnSpotLight::MFnSpotLight(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnSpotLight::MFnSpotLight(const MDagPath& path, MStatus* status) { Attach(*this, path, status); }
MFnAmbientLight::MFnAmbientLight(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnAmbientLight::MFnAmbientLight(const MDagPath& path, MStatus* status) { Attach(*this, path, status); }

double MFnLight::NumberOf(const char* attrName, MStatus* status) const
{
  MStatus found;
  const double value = findPlug(attrName, &found).asDouble(status);
  if (!found && status)
    *status = found;
  return value;
}

MColor MFnLight::color(MStatus* status) const
{
  MStatus found;
  const MPlug plug = findPlug("color", &found);
  if (status)
    *status = found && plug.numChildren() == 3 ? MS::kSuccess : MS::kFailure;
  if (!found || plug.numChildren() != 3)
    return MColor();
  return MColor(plug.child(0).asFloat(), plug.child(1).asFloat(), plug.child(2).asFloat());
}

float MFnLight::intensity(MStatus* status) const { return findPlug("intensity").asFloat(status); }

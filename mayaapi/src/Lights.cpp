#include <maya/MFnAmbientLight.h>
#include <maya/MFnAreaLight.h>
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
MFnAreaLight::MFnAreaLight(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnAreaLight::MFnAreaLight(const MDagPath& path, MStatus* status) { Attach(*this, path, status); }
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

MStatus MFnLight::SetNumber(const char* attrName, double value)
{
  MStatus found;
  MPlug plug = findPlug(attrName, &found);
  return found ? plug.setValue(value) : found;
}

MColor MFnLight::ColorOf(const char* attrName, MStatus* status) const
{
  MStatus found;
  const MPlug plug = findPlug(attrName, &found);
  const bool ok = found && plug.numChildren() == 3;
  if (status)
    *status = ok ? MS::kSuccess : MS::kFailure;
  if (!ok)
    return MColor();
  return MColor(plug.child(0).asFloat(), plug.child(1).asFloat(), plug.child(2).asFloat());
}

MStatus MFnLight::SetColorOf(const char* attrName, const MColor& value)
{
  MStatus found;
  const MPlug plug = findPlug(attrName, &found);
  if (!found || plug.numChildren() != 3)
    return MS::kFailure;
  for (unsigned int i = 0; i < 3; ++i) {
    const MStatus set = plug.child(i).setValue(value[i]);
    if (!set)
      return set;
  }
  return MS::kSuccess;
}

MColor MFnLight::color(MStatus* status) const { return ColorOf("color", status); }
MStatus MFnLight::setColor(const MColor& col) { return SetColorOf("color", col); }
float MFnLight::intensity(MStatus* status) const { return static_cast<float>(NumberOf("intensity", status)); }
MStatus MFnLight::setIntensity(const float& intens) { return SetNumber("intensity", intens); }
bool MFnLight::useRayTraceShadows(MStatus* status) const { return NumberOf("useRayTraceShadows", status) != 0.0; }
MStatus MFnLight::setUseRayTraceShadows(const bool& useRayTraceShadows)
{
  return SetNumber("useRayTraceShadows", useRayTraceShadows);
}
MColor MFnLight::shadowColor(MStatus* status) const { return ColorOf("shadowColor", status); }
MStatus MFnLight::setShadowColor(const MColor& shadow_color) { return SetColorOf("shadowColor", shadow_color); }

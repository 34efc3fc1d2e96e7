#include <maya/MFnBlinnShader.h>
#include <maya/MFnLambertShader.h>
#include <maya/MFnPhongEShader.h>
#include <maya/MFnPhongShader.h>
#include <maya/MFnReflectShader.h>

namespace {

template <typename Fn>
void Attach(Fn& fn, const MObject& object, MStatus* status)
{
  const MStatus result = fn.setObject(object);
  if (status)
    *status = result;
}

}

MFnLambertShader::MFnLambertShader(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnReflectShader::MFnReflectShader(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnBlinnShader::MFnBlinnShader(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnPhongShader::MFnPhongShader(const MObject& object, MStatus* status) { Attach(*this, object, status); }
MFnPhongEShader::MFnPhongEShader(const MObject& object, MStatus* status) { Attach(*this, object, status); }

MColor MFnLambertShader::ColorOf(const char* attrName, MStatus* status) const
{
  MStatus found;
  const MPlug plug = findPlug(attrName, &found);
  if (!found || plug.numChildren() != 3) {
    if (status)
      *status = MS::kFailure;
    return MColor();
  }
  if (status)
    *status = MS::kSuccess;
  return MColor(plug.child(0).asFloat(), plug.child(1).asFloat(), plug.child(2).asFloat());
}

float MFnLambertShader::FloatOf(const char* attrName, MStatus* status) const
{
  MStatus found;
  const float value = findPlug(attrName, &found).asFloat(status);
  if (!found && status)
    *status = found;
  return value;
}

MColor MFnLambertShader::color(MStatus* status) const { return ColorOf("color", status); }
MColor MFnLambertShader::transparency(MStatus* status) const { return ColorOf("transparency", status); }
MColor MFnLambertShader::ambientColor(MStatus* status) const { return ColorOf("ambientColor", status); }
MColor MFnLambertShader::incandescence(MStatus* status) const { return ColorOf("incandescence", status); }
float MFnLambertShader::diffuseCoeff(MStatus* status) const { return FloatOf("diffuse", status); }
float MFnLambertShader::translucenceCoeff(MStatus* status) const { return FloatOf("translucence", status); }

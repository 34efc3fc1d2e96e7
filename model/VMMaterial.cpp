#include "model/VMMaterial.h"

#include "base/TextUtil.h"

namespace {

bool SameColour(const uint32_t a[3], const uint32_t b[3])
{
    return a[0] == b[0] && a[1] == b[1] && a[2] == b[2];
}

bool SameShaderAssignments(const VMMaterial& a, const VMMaterial& b)
{
    if (a.ShaderAssignments.size() != b.ShaderAssignments.size())
        return false;
    for (size_t i = 0; i < a.ShaderAssignments.size(); ++i)
        if (a.ShaderAssignments[i].get() != b.ShaderAssignments[i].get())
            return false;
    return true;
}

} // namespace

bool IsSameMaterial(const VMMaterial& a, const VMMaterial& b)
{
    return a.Kind == b.Kind
        && EqualsNoCase(a.Name, b.Name)
        && EqualsNoCase(a.DiffuseTexture, b.DiffuseTexture)
        && EqualsNoCase(a.NormalMap, b.NormalMap)
        && EqualsNoCase(a.SpecularMap, b.SpecularMap)
        && EqualsNoCase(a.FifthString, b.FifthString)
        && EqualsNoCase(a.UserData, b.UserData)
        && a.IntegerAttribute1 == b.IntegerAttribute1
        && a.IntegerAttribute2 == b.IntegerAttribute2
        && a.IntegerAttribute3 == b.IntegerAttribute3
        && a.DoubleSided == b.DoubleSided
        && a.ModelFlag == b.ModelFlag
        && a.LightingFlag == b.LightingFlag
        && a.FourthFlag == b.FourthFlag
        && a.NoStripping == b.NoStripping
        && a.Transparency == b.Transparency
        && a.FlagWord == b.FlagWord
        && a.ShortAttribute == b.ShortAttribute
        && a.SpecularMultiplier == b.SpecularMultiplier
        && a.SpecularExponent == b.SpecularExponent
        && a.FurtherValue == b.FurtherValue
        && SameColour(a.AmbientColour, b.AmbientColour)
        && SameColour(a.SecondColour, b.SecondColour)
        && SameShaderAssignments(a, b);
}

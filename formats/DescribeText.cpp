#include "formats/DescribeText.h"

#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/TransparencyModes.h"
#include "model/VMMaterial.h"

std::string DescribePoint(const float (&point)[3])
{
    return Format("(%g, %g, %g)", static_cast<double>(point[0]), static_cast<double>(point[1]),
                  static_cast<double>(point[2]));
}

std::string DescribeMaterial(size_t number, const VMMaterial& material)
{
    const char* transparency = TransparencyModeName(material.Transparency);
    return Format("  %zu \"%s\": diffuse \"%s\", transparency %s, %zu shader(s)\n", number, material.Name.c_str(),
                  ShownPath(material.DiffuseTexture).c_str(),
                  transparency ? transparency : Format("%u", material.Transparency).c_str(),
                  material.ShaderAssignments.size());
}

#pragma once
// The transform values a Maya ASCII file stores on a dagPose (".xm[i]" in the matrix's "xform" form), given to the
// stand-in's pose for the member connected to ".m[i]" once the connections are made, so that "dagPose -r -g -bp"
// puts the bind pose back as Maya does.

#include "importers/ImportResult.h"
#include "importers/mayaascii/MayaAsciiPlugPath.h"
#include "importers/mayaascii/MayaAsciiRecord.h"

#include <maya/MObject.h>

#include <array>
#include <map>
#include <string>

class MaDagPose {
public:
    static bool Holds(const MaPlugPath& path);

    bool Take(const MaPlugPath& path, const MaSetAttr& set, std::string& why);
    void Build(const MObject& pose, const std::string& name, int line, ImportResult& result) const;

    // The values of Maya's "xform" form of a matrix: scale, rotate, rotate order, translate, shear, scale pivot and
    // its translation, rotate pivot and its translation, rotate axis and joint orient as quaternions (x y z w),
    // the inverse parent scale, and whether it compensates the parent's scale.
    static constexpr size_t kXformValues = 37;

private:
    std::map<unsigned int, std::array<double, kXformValues>> m_members;
};

#pragma once
// The keys a Maya ASCII file stores on an animation curve node (times and values, tangent types and handles),
// gathered over its setAttr commands and given to the stand-in's curve once the file has been read.

#include "importers/ImportResult.h"
#include "importers/mayaascii/MayaAsciiAttributes.h"
#include "importers/mayaascii/MayaAsciiPlugPath.h"
#include "importers/mayaascii/MayaAsciiRecord.h"

#include <maya/MObject.h>

#include <string>
#include <vector>

class MaCurveData {
public:
    static bool Holds(const MaPlugPath& path);

    // Keeps one setAttr; the values are in the file's units, which are remembered with them.
    bool Take(const MaPlugPath& path, const MaSetAttr& set, const MaUnits& units, std::string& why);
    void Build(const MObject& curve, const std::string& name, int line, ImportResult& result) const;

private:
    MaUnits m_units;
    std::vector<double> m_timeValues; // two per key
    std::vector<int> m_inTypes;
    std::vector<int> m_outTypes;
    std::vector<double> m_handles[4]; // in x, in y, out x, out y per key
    int m_defaultType = 0;
};

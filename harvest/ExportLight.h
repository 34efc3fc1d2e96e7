#pragma once
// A Maya light into the light record of a static export: point, spot and directional lights;
// ambient and other kinds give none. The light's transform carries the engine's light
// attributes ("Dynamic", "Corona", "Texture" ...), which an artist adds beside Maya's own.

#include <maya/MDagPath.h>

#include <memory>

struct VMLight;

// path is the light's transform (it has kLight and kTransform). Position and axes are in the
// engine's axes and centimetres; the radius is multiplied by lightScale. Failures are trace lines.
std::unique_ptr<VMLight> ExportLight(const MDagPath& path, float lightScale);

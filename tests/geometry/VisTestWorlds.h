#pragma once
// Worlds, portals and a log recorder for the visibility builder's tests.

#include "geometry/visibility/VBVisBuilder.h"
#include "model/VMWorld.h"
#include "report/VGLogger.h"

#include "base/TextUtil.h"

#include <cstdarg>
#include <string>
#include <vector>

class RecordingLogger : public VGLogger {
public:
    void Print(const char* format, ...) override __attribute__((format(printf, 2, 3)))
    {
        va_list args;
        va_start(args, format);
        Lines.push_back(FormatV(format, args));
        va_end(args);
    }
    void Warning(const char* format, ...) override __attribute__((format(printf, 2, 3)))
    {
        va_list args;
        va_start(args, format);
        Lines.push_back("Warning:" + FormatV(format, args));
        va_end(args);
    }
    bool Has(const std::string& line) const
    {
        for (const std::string& recorded : Lines)
            if (recorded == line)
                return true;
        return false;
    }

    std::vector<std::string> Lines;
};

inline VMVertex* AddVisVertex(VMWorld& world, const VBVector& point)
{
    VMVertex* vertex = VMWorld::NewVertex().release();
    vertex->Position[0] = static_cast<float>(point.X);
    vertex->Position[1] = static_cast<float>(point.Y);
    vertex->Position[2] = static_cast<float>(point.Z);
    world.Vertices.Add(vertex);
    return vertex;
}

inline VMPolygon* AddVisTriangle(VMWorld& world, const VBVector& a, const VBVector& b, const VBVector& c)
{
    VMPolygon* polygon = VMWorld::NewTriangle(AddVisVertex(world, a), AddVisVertex(world, b), AddVisVertex(world, c)).release();
    world.Polygons.Add(polygon);
    return polygon;
}

// Two triangles, (a, b, c) and (a, c, d).
inline void AddVisQuad(VMWorld& world, const VBVector& a, const VBVector& b, const VBVector& c, const VBVector& d)
{
    AddVisTriangle(world, a, b, c);
    AddVisTriangle(world, a, c, d);
}

// The six faces of the box between low and high, two triangles each: floor, ceiling, the
// walls at y = low and y = high, then the end walls at x = low and x = high.
inline void AddVisBox(VMWorld& world, const VBVector& low, const VBVector& high)
{
    const double x0 = low.X, y0 = low.Y, z0 = low.Z, x1 = high.X, y1 = high.Y, z1 = high.Z;
    AddVisQuad(world, {x0, y0, z0}, {x1, y0, z0}, {x1, y1, z0}, {x0, y1, z0});
    AddVisQuad(world, {x0, y0, z1}, {x0, y1, z1}, {x1, y1, z1}, {x1, y0, z1});
    AddVisQuad(world, {x0, y0, z0}, {x0, y0, z1}, {x1, y0, z1}, {x1, y0, z0});
    AddVisQuad(world, {x0, y1, z0}, {x1, y1, z0}, {x1, y1, z1}, {x0, y1, z1});
    AddVisQuad(world, {x0, y0, z0}, {x0, y1, z0}, {x0, y1, z1}, {x0, y0, z1});
    AddVisQuad(world, {x1, y0, z0}, {x1, y0, z1}, {x1, y1, z1}, {x1, y1, z0});
}

// A rectangle across the plane x = at, from (low y, low z) to (high y, high z), whose normal
// points to +x: its front is the side of larger x.
inline VBPortal& AddPortalAcrossX(VBVisBuilder& builder, double at, double lowY, double lowZ, double highY, double highZ,
                                  const std::string& name, const std::string& frontName = {},
                                  const std::string& backName = {})
{
    VBPortal& portal = builder.AddPortal(4);
    portal.Corners = {{at, lowY, lowZ}, {at, highY, lowZ}, {at, highY, highZ}, {at, lowY, highZ}};
    portal.Name = name;
    portal.FrontName = frontName;
    portal.BackName = backName;
    return portal;
}

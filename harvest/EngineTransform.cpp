#include "harvest/EngineTransform.h"

#include <cmath>

namespace {

void ToEngineAxes(const double* row, float out[3])
{
    out[0] = static_cast<float>(row[0]);
    out[1] = static_cast<float>(-row[2]);
    out[2] = static_cast<float>(row[1]);
}

constexpr float kShortestNormalisedLength = 1.1920929e-7f;

void Normalise(float v[3])
{
    const float length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    if (length >= kShortestNormalisedLength)
        for (int i = 0; i < 3; ++i)
            v[i] /= length;
}

float Dot(const float a[3], const float b[3]) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

}

VMTransform ToEngineTransform(const MMatrix& m)
{
    // Maya's rows are the images of its axes (row-vector convention); the engine's columns are
    // the images of its own: engine x is Maya x, engine y is Maya -z, engine z is Maya y.
    float columns[3][3];
    const double negatedZ[3] = {-m.matrix[2][0], -m.matrix[2][1], -m.matrix[2][2]};
    ToEngineAxes(m.matrix[0], columns[0]);
    ToEngineAxes(negatedZ, columns[1]);
    ToEngineAxes(m.matrix[1], columns[2]);
    VMTransform transform;
    for (int c = 0; c < 3; ++c)
        for (int r = 0; r < 3; ++r)
            transform.At(r, c) = columns[c][r];
    ToEngineAxes(m.matrix[3], transform.Translation());
    return transform;
}

VMTransform FrameInEngineAxes(const MMatrix& m)
{
    VMTransform frame;
    for (int r = 0; r < 4; ++r)
        ToEngineAxes(m.matrix[r], frame.M + 3 * r);
    return frame;
}

void OrthonormaliseAxes(VMTransform& transform)
{
    float* x = transform.M;
    float* y = transform.M + 3;
    float* z = transform.M + 6;
    Normalise(x);
    Normalise(y);
    Normalise(z);
    const float xy = Dot(x, y);
    for (int i = 0; i < 3; ++i)
        y[i] -= xy * x[i];
    Normalise(y);
    const float xz = Dot(x, z);
    const float yz = Dot(y, z);
    for (int i = 0; i < 3; ++i)
        z[i] -= xz * x[i] + yz * y[i];
    Normalise(z);
}

VMTransform PlacementFromNode(const MDagPath& path)
{
    VMTransform world = ToEngineTransform(path.inclusiveMatrix());
    OrthonormaliseAxes(world);
    VMTransform placement;
    Invert(world, placement);
    return placement;
}

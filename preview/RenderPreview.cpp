#include "preview/RenderPreview.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace {

constexpr int Samples = 2;
constexpr float HalfFieldOfView = 0.30f;

using Vec3 = std::array<float, 3>;

Vec3 Add(const Vec3& a, const Vec3& b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }
Vec3 Sub(const Vec3& a, const Vec3& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
Vec3 Scale(const Vec3& a, float s) { return {a[0] * s, a[1] * s, a[2] * s}; }
float Dot(const Vec3& a, const Vec3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
Vec3 Cross(const Vec3& a, const Vec3& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
Vec3 Normalised(const Vec3& a)
{
    const float length = std::sqrt(Dot(a, a));
    return length > 0.0f && std::isfinite(length) ? Scale(a, 1.0f / length) : Vec3 {0.0f, 0.0f, 0.0f};
}

struct Camera {
    Vec3 Eye {};
    Vec3 Right {};
    Vec3 Up {};
    Vec3 Back {};
    Vec3 Light {};
    float Focal = 1.0f;
};

Camera CameraFor(const PreviewMesh& mesh, const PreviewView& view)
{
    Vec3 low {std::numeric_limits<float>::max(), std::numeric_limits<float>::max(), std::numeric_limits<float>::max()};
    Vec3 high = Scale(low, -1.0f);
    for (const PreviewTriangle& triangle : mesh.Triangles)
        for (const PreviewCorner& corner : triangle.Corners)
            for (size_t axis = 0; axis < 3; ++axis) {
                low[axis] = std::min(low[axis], corner.Position[axis]);
                high[axis] = std::max(high[axis], corner.Position[axis]);
            }
    const Vec3 centre = Scale(Add(low, high), 0.5f);
    const float radius = std::max(0.5f * std::sqrt(Dot(Sub(high, low), Sub(high, low))), 1e-6f);

    const float yaw = view.Yaw * std::numbers::pi_v<float> / 180.0f;
    const float pitch = std::clamp(view.Pitch, -89.0f, 89.0f) * std::numbers::pi_v<float> / 180.0f;
    Camera camera;
    // The engine's up axis is +Z.
    camera.Back = {std::cos(pitch) * std::sin(yaw), -std::cos(pitch) * std::cos(yaw), std::sin(pitch)};
    camera.Right = Normalised(Cross({0.0f, 0.0f, 1.0f}, camera.Back));
    camera.Up = Cross(camera.Back, camera.Right);
    // The narrower side of the picture decides how far back the whole sphere around the mesh fits.
    const float aspect = static_cast<float>(view.Width) / static_cast<float>(view.Height);
    const float halfAngle = aspect < 1.0f ? std::atan(std::tan(HalfFieldOfView) * aspect) : HalfFieldOfView;
    camera.Eye = Add(centre, Scale(camera.Back, 1.05f * radius / std::sin(halfAngle)));
    camera.Focal = 0.5f / std::tan(HalfFieldOfView);
    // From over the viewer's left shoulder.
    camera.Light = Normalised(Add(Add(Scale(camera.Back, 0.7f), Scale(camera.Up, 0.6f)), Scale(camera.Right, -0.4f)));
    return camera;
}

struct ScreenCorner {
    float X = 0.0f;
    float Y = 0.0f;
    // The reciprocal of the depth, and the attributes divided by the depth, interpolate linearly.
    float InverseDepth = 0.0f;
    std::array<float, 5> Attributes {};
};

std::array<uint8_t, 3> Colour(const PreviewMesh& mesh, int materialNumber, float u, float v)
{
    if (materialNumber < 0 || static_cast<size_t>(materialNumber) >= mesh.Materials.size())
        return {180, 180, 180};
    const PreviewMaterial& material = mesh.Materials[static_cast<size_t>(materialNumber)];
    const RgbImage& texture = material.Texture;
    if (texture.Rgb.empty() || !std::isfinite(u) || !std::isfinite(v))
        return material.Colour;
    const auto wrap = [](float t, int size) {
        const int texel = static_cast<int>(std::floor((t - std::floor(t)) * static_cast<float>(size)));
        return std::clamp(texel, 0, size - 1);
    };
    const size_t at = (static_cast<size_t>(wrap(v, texture.Height)) * static_cast<size_t>(texture.Width) +
                       static_cast<size_t>(wrap(u, texture.Width))) * 3;
    return {texture.Rgb[at], texture.Rgb[at + 1], texture.Rgb[at + 2]};
}

class Canvas {
public:
    Canvas(int width, int height)
        : m_width(width)
        , m_height(height)
        , m_depth(static_cast<size_t>(width) * static_cast<size_t>(height), 0.0f)
        , m_rgb(static_cast<size_t>(width) * static_cast<size_t>(height) * 3)
    {
        for (int y = 0; y < height; ++y) {
            const auto shade = static_cast<uint8_t>(236 - 40 * y / std::max(height, 1));
            for (int x = 0; x < width; ++x)
                std::fill_n(&m_rgb[Offset(x, y) * 3], 3, shade);
        }
    }

    void Draw(const PreviewMesh& mesh, const PreviewTriangle& triangle, const Camera& camera)
    {
        std::array<ScreenCorner, 3> corners;
        Vec3 world[3];
        for (size_t k = 0; k < 3; ++k) {
            const PreviewCorner& corner = triangle.Corners[k];
            world[k] = {corner.Position[0], corner.Position[1], corner.Position[2]};
            const Vec3 relative = Sub(world[k], camera.Eye);
            const float depth = -Dot(relative, camera.Back);
            if (!(depth > 0.0f) || !std::isfinite(depth))
                return;
            ScreenCorner& screen = corners[k];
            const float scale = camera.Focal * static_cast<float>(m_height) / depth;
            screen.X = 0.5f * static_cast<float>(m_width) + Dot(relative, camera.Right) * scale;
            screen.Y = 0.5f * static_cast<float>(m_height) - Dot(relative, camera.Up) * scale;
            if (!std::isfinite(screen.X) || !std::isfinite(screen.Y))
                return;
            screen.InverseDepth = 1.0f / depth;
            const Vec3 normal = Normalised({corner.Normal[0], corner.Normal[1], corner.Normal[2]});
            screen.Attributes = {corner.UV[0], corner.UV[1], normal[0], normal[1], normal[2]};
            for (float& attribute : screen.Attributes)
                attribute *= screen.InverseDepth;
        }
        const Vec3 faceNormal = Normalised(Cross(Sub(world[1], world[0]), Sub(world[2], world[0])));
        const float area = Edge(corners[0], corners[1], corners[2].X, corners[2].Y);
        if (!(std::abs(area) > 1e-12f))
            return;

        // Clamped as floats first: a corner far off the picture must not overflow an int.
        const auto bound = [](float value, int size) { return static_cast<int>(std::clamp(value, 0.0f, static_cast<float>(size - 1))); };
        const int left = bound(std::floor(std::min({corners[0].X, corners[1].X, corners[2].X})), m_width);
        const int right = bound(std::ceil(std::max({corners[0].X, corners[1].X, corners[2].X})), m_width);
        const int top = bound(std::floor(std::min({corners[0].Y, corners[1].Y, corners[2].Y})), m_height);
        const int bottom = bound(std::ceil(std::max({corners[0].Y, corners[1].Y, corners[2].Y})), m_height);
        for (int y = top; y <= bottom; ++y) {
            for (int x = left; x <= right; ++x) {
                const float px = static_cast<float>(x) + 0.5f;
                const float py = static_cast<float>(y) + 0.5f;
                const float w0 = Edge(corners[1], corners[2], px, py) / area;
                const float w1 = Edge(corners[2], corners[0], px, py) / area;
                const float w2 = 1.0f - w0 - w1;
                if (w0 < 0.0f || w1 < 0.0f || w2 < 0.0f)
                    continue;
                const float inverseDepth = w0 * corners[0].InverseDepth + w1 * corners[1].InverseDepth +
                                           w2 * corners[2].InverseDepth;
                float& stored = m_depth[Offset(x, y)];
                if (inverseDepth <= stored)
                    continue;
                stored = inverseDepth;
                std::array<float, 5> a {};
                for (size_t i = 0; i < a.size(); ++i)
                    a[i] = (w0 * corners[0].Attributes[i] + w1 * corners[1].Attributes[i] +
                            w2 * corners[2].Attributes[i]) / inverseDepth;
                Vec3 normal = Normalised({a[2], a[3], a[4]});
                if (Dot(normal, normal) == 0.0f)
                    normal = faceNormal;
                // Both faces are lit: the side towards the viewer counts.
                if (Dot(normal, camera.Back) < 0.0f)
                    normal = Scale(normal, -1.0f);
                const float light = 0.35f + 0.65f * std::max(0.0f, Dot(normal, camera.Light));
                const std::array<uint8_t, 3> colour = Colour(mesh, triangle.Material, a[0], a[1]);
                for (size_t c = 0; c < 3; ++c)
                    m_rgb[Offset(x, y) * 3 + c] = static_cast<uint8_t>(std::min(255.0f, static_cast<float>(colour[c]) * light));
            }
        }
    }

    // Each pixel of the picture is the mean of its Samples x Samples canvas pixels.
    RgbImage Picture(int width, int height) const
    {
        RgbImage picture;
        picture.Width = width;
        picture.Height = height;
        picture.Rgb.resize(static_cast<size_t>(width) * static_cast<size_t>(height) * 3);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                for (size_t c = 0; c < 3; ++c) {
                    int sum = 0;
                    for (int sy = 0; sy < Samples; ++sy)
                        for (int sx = 0; sx < Samples; ++sx)
                            sum += m_rgb[Offset(x * Samples + sx, y * Samples + sy) * 3 + c];
                    picture.Rgb[(static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)) * 3 + c] =
                        static_cast<uint8_t>(sum / (Samples * Samples));
                }
        return picture;
    }

private:
    static float Edge(const ScreenCorner& a, const ScreenCorner& b, float x, float y)
    {
        return (b.X - a.X) * (y - a.Y) - (b.Y - a.Y) * (x - a.X);
    }
    size_t Offset(int x, int y) const { return static_cast<size_t>(y) * static_cast<size_t>(m_width) + static_cast<size_t>(x); }

    int m_width;
    int m_height;
    std::vector<float> m_depth;
    std::vector<uint8_t> m_rgb;
};

} // namespace

RgbImage RenderPreview(const PreviewMesh& mesh, const PreviewView& view)
{
    const int width = std::clamp(view.Width, 1, 8192);
    const int height = std::clamp(view.Height, 1, 8192);
    Canvas canvas(width * Samples, height * Samples);
    if (!mesh.Triangles.empty()) {
        const Camera camera = CameraFor(mesh, {width, height, view.Yaw, view.Pitch});
        for (const PreviewTriangle& triangle : mesh.Triangles)
            canvas.Draw(mesh, triangle, camera);
    }
    return canvas.Picture(width, height);
}

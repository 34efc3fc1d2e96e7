#include "geometry/visibility/VisDebugDump.h"

#include "base/Path.h"
#include "geometry/visibility/VBVisBuilder.h"

#include <cstring>

namespace {

constexpr uint32_t DumpVersion = 2;

class Bytes {
public:
    void U8(uint8_t value) { m_text.push_back(static_cast<char>(value)); }
    void U32(uint32_t value)
    {
        for (int shift = 0; shift < 32; shift += 8)
            U8(static_cast<uint8_t>(value >> shift));
    }
    void I32(int32_t value) { U32(static_cast<uint32_t>(value)); }
    void F32(float value)
    {
        uint32_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        U32(bits);
    }
    void F64(double value)
    {
        uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        U32(static_cast<uint32_t>(bits));
        U32(static_cast<uint32_t>(bits >> 32));
    }
    void Point(const VBVector& point)
    {
        for (int axis = 0; axis < 3; ++axis)
            F32(static_cast<float>(point[axis]));
    }
    void Raw(const char* data, size_t size) { m_text.append(data, size); }

    const std::string& Text() const { return m_text; }

private:
    std::string m_text;
};

uint32_t AreaId(const VBState& state, int32_t area)
{
    return area < 0 ? 0xFFFFFFFFu : static_cast<uint32_t>(state.Areas[static_cast<size_t>(area)].Id);
}

} // namespace

void VisDebugDump::Open(const std::string& path)
{
    m_stageOffsets.clear();
    m_offset = 0;
    m_file.reset(std::fopen(ToNativePath(path).c_str(), "wb"));
    Bytes header;
    header.Raw("VISINFO", 8);
    header.U32(DumpVersion);
    Write(header.Text());
}

void VisDebugDump::WriteStage(const char* title, const VBState& state, const std::vector<std::unique_ptr<VBPortal>>& portals)
{
    if (!m_file || m_stageOffsets.size() >= MaxStages)
        return;
    Bytes record;
    const size_t titleLength = std::strlen(title) + 1;
    record.U32(static_cast<uint32_t>(titleLength));
    record.Raw(title, titleLength);

    record.U32(static_cast<uint32_t>(state.Areas.size()));
    for (const VBArea& area : state.Areas) {
        record.U32(static_cast<uint32_t>(area.Id));
        record.U32(static_cast<uint32_t>(area.References));
        record.U32(static_cast<uint32_t>(area.Elements));
        for (int axis = 0; axis < 3; ++axis)
            record.F64(area.Box.Min[axis]);
        for (int axis = 0; axis < 3; ++axis)
            record.F64(area.Box.Max[axis]);
    }

    record.U32(static_cast<uint32_t>(portals.size()));
    for (size_t p = 0; p < portals.size(); ++p) {
        const bool prepared = p < state.Portals.size();
        record.U8(prepared && state.Portals[p].Bad ? 1 : 0);
        record.U32(prepared ? AreaId(state, state.Portals[p].FrontArea) : 0xFFFFFFFFu);
        record.U32(prepared ? AreaId(state, state.Portals[p].BackArea) : 0xFFFFFFFFu);
        record.U32(static_cast<uint32_t>(portals[p]->Corners.size()));
        for (const VBVector& corner : portals[p]->Corners)
            record.Point(corner);
    }

    record.U32(static_cast<uint32_t>(state.List.size()));
    record.U32(state.SequenceCounter);
    for (const int32_t number : state.List) {
        const VBPolygon& polygon = state.Polygons[static_cast<size_t>(number)];
        record.U32(polygon.Area < 0 ? 0u : AreaId(state, polygon.Area));
        record.U32(static_cast<uint32_t>(polygon.Portal));
        record.U32(polygon.Sequence);
        record.I32(static_cast<int32_t>(polygon.CornerCount));
        const VBVector* corners = state.CornersOf(polygon);
        for (uint32_t k = 0; k < polygon.CornerCount; ++k)
            record.Point(corners[k]);
    }

    const uint32_t offset = m_offset;
    if (Write(record.Text()))
        m_stageOffsets.push_back(offset);
}

void VisDebugDump::Close()
{
    if (!m_file)
        return;
    Bytes table;
    for (const uint32_t offset : m_stageOffsets)
        table.U32(offset);
    table.U32(static_cast<uint32_t>(m_stageOffsets.size()));
    Write(table.Text());
    m_file.reset();
}

bool VisDebugDump::Write(const std::string& bytes)
{
    if (!m_file)
        return false;
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file.get()) != bytes.size()) {
        m_file.reset();
        return false;
    }
    m_offset += static_cast<uint32_t>(bytes.size());
    return true;
}

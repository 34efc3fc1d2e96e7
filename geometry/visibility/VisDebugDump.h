#pragma once
// The builder's debug file ("_debug.VISINFO"): a snapshot of its areas, portals and polygons
// after each stage, for inspecting a level whose zones come out wrong.
//
// Layout, little-endian: "VISINFO" and a zero byte, u32 version 2; then one record per stage;
// then the u32 file offsets of the records and their u32 count. A stage record: u32 title
// length with its zero byte, the title; u32 area count and per area u32 id, u32 reference
// count, u32 element count, 3 x f64 box minimum, 3 x f64 box maximum; u32 portal count and per
// portal u8 bad flag, u32 front and back area ids (-1 when none), u32 corner count, corners as
// 3 x f32; u32 polygon count, u32 sequence counter, and per polygon u32 area id (0 when
// none), u32 portal index, u32 sequence number, i32 corner count, corners as 3 x f32.

#include "geometry/visibility/VBState.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

struct VBPortal;

class VisDebugDump {
public:
    static constexpr int MaxStages = 10;

    // Creates the file and writes its header; a file that cannot be made leaves every later
    // call without effect.
    void Open(const std::string& path);
    void WriteStage(const char* title, const VBState& state, const std::vector<std::unique_ptr<VBPortal>>& portals);
    // Writes the table of stage offsets and closes the file.
    void Close();

    bool IsOpen() const { return m_file != nullptr; }

private:
    struct FileCloser {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    bool Write(const std::string& bytes);

    std::unique_ptr<std::FILE, FileCloser> m_file;
    uint32_t m_offset = 0;
    std::vector<uint32_t> m_stageOffsets;
};

#pragma once
// Small scenes and a harvest state for the harvest tests.

#include "harvest/HarvestState.h"
#include "report/DebugFile.h"
#include "report/KestrelReportMessage.h"
#include "tests/UniqueTempFolder.h"

#include <maya/MPoint.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace harvesttest {

//      2-------3        faces: 0 front (+z) 0 1 3 2, 1 top 2 3 5 4, 2 back 4 5 7 6,
//     /|      /|               3 bottom 6 7 1 0, 4 right 1 7 5 3, 5 left 6 0 2 4
//    4-------5 |
//    | 0-----|-1
//    |/      |/
//    6-------7
inline standin::MeshDescription Cube(double size = 1.0)
{
    const double h = size / 2;
    return standin::MeshDescription{{MPoint(-h, -h, h), MPoint(h, -h, h), MPoint(-h, h, h), MPoint(h, h, h), MPoint(-h, h, -h),
                              MPoint(h, h, -h), MPoint(-h, -h, -h), MPoint(h, -h, -h)},
                             {4, 4, 4, 4, 4, 4},
                             {0, 1, 3, 2, 2, 3, 5, 4, 4, 5, 7, 6, 6, 7, 1, 0, 1, 7, 5, 3, 6, 0, 2, 4}};
}

// Every edge of the cube, so that each corner takes its face's normal.
inline std::vector<std::pair<int, int>> CubeEdges()
{
    return {{0, 1}, {1, 3}, {3, 2}, {2, 0}, {3, 5}, {5, 4}, {4, 2}, {5, 7}, {7, 6}, {6, 4}, {7, 1}, {6, 0}};
}

// 0---1---2   two quads side by side in the xy plane
// |   |   |
// 3---4---5
inline standin::MeshDescription TwoQuads()
{
    return standin::MeshDescription{
        {MPoint(0, 1, 0), MPoint(1, 1, 0), MPoint(2, 1, 0), MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(2, 0, 0)},
        {4, 4},
        {3, 4, 1, 0, 4, 5, 2, 1}};
}

class TestReport : public KestrelReportMessage {
public:
    int Count(uint32_t kind) const
    {
        int count = 0;
        for (const VReportIssue& issue : Issues())
            count += issue.Kind == kind ? 1 : 0;
        return count;
    }
    std::vector<std::string> Details(uint32_t kind) const
    {
        std::vector<std::string> details;
        for (const VReportIssue& issue : Issues())
            if (issue.Kind == kind)
                details.push_back(issue.Detail);
        return details;
    }
};

// A fresh scene, a harvest state for a static export with default options, and the debug file
// captured for the test.
class HarvestTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        standin::NewScene();
        parameters.Options.ExportTangents = false;
        OpenDebugFile(m_debugPath, DebugFileFlushEachLine);
    }

    void TearDown() override
    {
        CloseDebugFile();
    }

    HarvestState& State()
    {
        if (!m_state) {
            m_state = std::make_unique<HarvestState>(parameters, report);
            m_state->StartExport();
        }
        return *m_state;
    }

    std::string DebugText()
    {
        CloseDebugFile();
        std::ifstream in(m_debugPath, std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }

    HarvestParameters parameters;
    TestReport report;

private:
    std::unique_ptr<HarvestState> m_state;
    UniqueTempFolder m_debugFolder{"kestrel_harvest"};
    std::string m_debugPath = m_debugFolder.Native("debug.txt").string();
};

}

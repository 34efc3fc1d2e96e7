#pragma once
// The world kinds that only the older model file carries. No pass of the exporter reads them;
// the world keeps and numbers them so that such a file survives a round trip.

#include <string>

struct VMTexturePlane {
    float Axes[2][4] = {{1.0f, 0.0f, 0.0f, 0.0f}, {0.0f, 1.0f, 0.0f, 0.0f}};
    int Index = 0;
};

struct VMEntity {
    std::string ClassName;
    std::string Name;
    float Position[3] = {0.0f, 0.0f, 0.0f};
    float Orientation[3] = {0.0f, 0.0f, 0.0f};
    std::string Parameters;
    int Index = 0;
};

struct VMEventArea {
    std::string Name;
    int FirstPlane = 0;
    int PlaneCount = 0;
    int Index = 0;
};

struct VMEventAreaPlane {
    double Normal[3] = {0.0, 0.0, 0.0};
    double D = 0.0;
    int Index = 0;
};

struct VMPath {
    std::string Name;
    int FirstNode = 0;
    int NodeCount = 0;
    int Index = 0;
};

struct VMPathNode {
    float Position[3] = {0.0f, 0.0f, 0.0f};
    int Index = 0;
};

struct VMShadowModel {
    std::string FileName;
    float Position[3] = {0.0f, 0.0f, 0.0f};
    int Index = 0;
};

struct VMWallmark {
    std::string Texture;
    float Position[3] = {0.0f, 0.0f, 0.0f};
    float Normal[3] = {0.0f, 0.0f, 1.0f};
    float Size = 0.0f;
    int Index = 0;
};

struct VMLightGrid {
    float Origin[3] = {0.0f, 0.0f, 0.0f};
    float CellSize[3] = {0.0f, 0.0f, 0.0f};
    int CellCount[3] = {0, 0, 0};
};

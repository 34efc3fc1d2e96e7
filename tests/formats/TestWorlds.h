#pragma once
// Small literal worlds for the writer tests.

#include "model/VMWorld.h"

#include <cstdint>
#include <initializer_list>
#include <string>

VMMaterial& AddMaterial(VMWorld& world, const std::string& name);
VMVertex& AddVertex(VMWorld& world, float x, float y, float z);
// A polygon of the listed vertex numbers, in no group.
VMPolygon& AddPolygon(VMWorld& world, std::initializer_list<int> corners, VMMaterial& material);
// A tri-list of the listed vertex numbers (three per triangle), in no group.
VMTriList& AddTriList(VMWorld& world, std::initializer_list<int> corners, VMMaterial& material);
// n x n quads of two triangles each on a grid of (n + 1)^2 vertices; one polygon per triangle.
void AddGrid(VMWorld& world, int n, VMMaterial& material);

#pragma once
// The plane of a shadow triangle A, B, C as the shadow mesh stores it: the normal
// (C - A) x (B - A), normalised unless its length is below FLT_EPSILON (a degenerate triangle
// keeps the unnormalised product), and w = -(normal . A).

void ComputeShadowPlane(const float a[3], const float b[3], const float c[3], float plane[4]);

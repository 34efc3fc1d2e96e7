#pragma once
// A 3 x 4 transform: nine rotation floats stored column by column, then three translation
// floats. Element (row r, column c) of the rotation is M[3 * c + r]; A * B applies B first.

struct VMTransform {
    float M[12] = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};

    static VMTransform Identity() { return {}; }

    float& At(int row, int column) { return M[3 * column + row]; }
    float At(int row, int column) const { return M[3 * column + row]; }
    float* Translation() { return M + 9; }
    const float* Translation() const { return M + 9; }

    bool IsIdentity() const;
    void TransformPoint(const float in[3], float out[3]) const;
    void TransformDirection(const float in[3], float out[3]) const;
};

VMTransform operator*(const VMTransform& a, const VMTransform& b);

// False (and the identity in out) when the rotation part is singular.
bool Invert(const VMTransform& transform, VMTransform& out);

// The rotation part as a unit quaternion (x, y, z, w), by the trace method: w from the trace
// when it is >= 0, else from the largest diagonal element; divided by its length when that is
// above 0. The rotation part is expected to be orthonormal.
void RotationToQuaternion(const VMTransform& transform, float quaternion[4]);

// The transform that rotates by the quaternion (x, y, z, w; normalised first unless its length is
// 0) and then moves by translation.
VMTransform TransformFromQuaternion(const float quaternion[4], const float translation[3]);


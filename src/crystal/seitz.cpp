#include "crystal/seitz.hpp"

#include "crystal/whole_vectors.hpp"

namespace vntl {

namespace {

constexpr int Modulo12(int value) { return ((value % twelfths) + twelfths) % twelfths; }

Translation12 Reduced(const Whole_Vector& tr) {
    Translation12 result;
    for (std::size_t i = 0; i < 3; ++i) result[i] = static_cast<std::int8_t>(Modulo12(tr[i]));
    return result;
}

}  // namespace

Rotation operator*(const Rotation& a, const Rotation& b) {
    Rotation c;
    for (std::size_t i = 0; i < 9; i += 3)
        for (std::size_t j = 0; j < 3; ++j) c[i + j] = static_cast<std::int8_t>(a[i] * b[j] + a[i + 1] * b[j + 3] + a[i + 2] * b[j + 6]);
    return c;
}

Rotation operator-(const Rotation& a) {
    Rotation b;
    for (std::size_t i = 0; i < 9; ++i) b[i] = static_cast<std::int8_t>(-a[i]);
    return b;
}

Seitz operator*(const Seitz& a, const Seitz& b) {
    Whole_Vector tr = a.rot * Whole_Vector{b.tr[0], b.tr[1], b.tr[2]};
    for (std::size_t i = 0; i < 3; ++i) tr[i] += a.tr[i];
    return {a.rot * b.rot, Reduced(tr)};
}

Seitz Inverse(const Seitz& a) {
    const Rotation& r = a.rot;
    const int d = Determinant(r);
    const auto cofactor = [&](std::size_t i, std::size_t j, std::size_t k, std::size_t l) {
        return static_cast<std::int8_t>(d * (r[i] * r[j] - r[k] * r[l]));
    };
    const Rotation inverse = {cofactor(4, 8, 5, 7), cofactor(2, 7, 1, 8), cofactor(1, 5, 2, 4), cofactor(5, 6, 3, 8), cofactor(0, 8, 2, 6),
                              cofactor(2, 3, 0, 5), cofactor(3, 7, 4, 6), cofactor(1, 6, 0, 7), cofactor(0, 4, 1, 3)};
    Whole_Vector tr = inverse * Whole_Vector{a.tr[0], a.tr[1], a.tr[2]};
    for (int& t : tr) t = -t;
    return {inverse, Reduced(tr)};
}

int Trace(const Rotation& r) { return r[0] + r[4] + r[8]; }

int Determinant(const Rotation& r) {
    return r[0] * (r[4] * r[8] - r[5] * r[7]) - r[1] * (r[3] * r[8] - r[5] * r[6]) + r[2] * (r[3] * r[7] - r[4] * r[6]);
}

int Rotation_Order(const Rotation& rot) {
    const int determinant = Determinant(rot);
    if (determinant != 1 && determinant != -1) return 0;
    switch (determinant * Trace(rot)) {  // the rotation part of an improper rotation has the opposite trace
        case 3:
            return determinant;
        case -1:
            return determinant * 2;
        case 0:
            return determinant * 3;
        case 1:
            return determinant * 4;
        case 2:
            return determinant * 6;
        default:
            return 0;
    }
}

}  // namespace vntl

#include "crystal/point_group.hpp"

#include <algorithm>
#include <cstdlib>

#include "crystal/whole_vectors.hpp"

namespace vntl {

namespace {

constexpr std::string_view triclinic = "Triclinic", monoclinic = "Monoclinic", orthorhombic = "Orthorhombic", tetragonal = "Tetragonal",
                           trigonal = "Trigonal", hexagonal = "Hexagonal", cubic = "Cubic";

// How many rotations there are of each order.
class Orders {
public:
    explicit Orders(std::span<const Rotation> rotations) {
        for (const Rotation& rot : rotations) {
            const int order = Rotation_Order(rot);
            known_ = known_ && order != 0;
            ++count_[static_cast<std::size_t>(order + 6)];
        }
    }
    bool Known() const { return known_; }
    int operator[](int order) const { return count_[static_cast<std::size_t>(order + 6)]; }
    int Of_Both_Signs(int order) const { return (*this)[order] + (*this)[-order]; }

private:
    std::array<int, 13> count_ = {};
    bool known_ = true;
};

int Nonzero(const Hkl& axis) { return static_cast<int>(3 - std::count(axis.begin(), axis.end(), 0)); }

// What a class is made of: counts, whether there is a centre, and two-fold axes.
class Class_Finder {
public:
    explicit Class_Finder(std::span<const Rotation> rotations)
        : rotations_(rotations),
          orders_(rotations),
          hexagonal_(Hexagonal_Axes(rotations)),
          centric_(orders_[-1] > 0),
          proper_(std::all_of(rotations.begin(), rotations.end(), [](const Rotation& r) { return Determinant(r) > 0; })) {}

    Status Find(Point_Class& found) const {
        if (rotations_.empty()) return Status::Fail(" No symmetry operators are given");
        if (!orders_.Known()) return Status::Fail(" Rotation Not Determined");
        const int all = static_cast<int>(rotations_.size()) / (centric_ ? 2 : 1);
        const int threes = orders_.Of_Both_Signs(3) / (centric_ ? 2 : 1), fours = orders_.Of_Both_Signs(4),
                  sixes = orders_.Of_Both_Signs(6);
        if (threes == 8 && all == 12) return Give(found, cubic, "m-3", centric_ ? "m-3" : "23");
        if (threes == 8 && all == 24) return Give(found, cubic, "m-3m", centric_ ? "m-3m" : proper_ ? "432" : "-43m");
        if (sixes > 0 && all == 6) return Give(found, hexagonal, "6/m", centric_ ? "6/m" : orders_[6] > 0 ? "6" : "-6");
        if (sixes > 0 && all == 12) return Give(found, hexagonal, "6/mmm", Hexagonal());
        if (threes == 2 && all == 3) return Give(found, trigonal, "-3", centric_ ? "-3" : "3");
        if (threes == 2 && all == 6) return Trigonal(found);
        if (fours > 0 && all == 4) return Give(found, tetragonal, "4/m", centric_ ? "4/m" : orders_[4] > 0 ? "4" : "-4");
        if (fours > 0 && all == 8) return Give(found, tetragonal, "4/mmm", Tetragonal());
        if (threes == 0 && fours == 0 && all == 4) return Give(found, orthorhombic, "mmm", Orthorhombic());
        if (threes == 0 && all == 2) return Give(found, monoclinic, "2/m", centric_ ? "2/m" : proper_ ? "2" : "m");
        if (all == 1) return Give(found, triclinic, "-1", centric_ ? "-1" : "1");
        return Status::Fail(" Rotation Not Determined");
    }

private:
    static Status Give(Point_Class& found, std::string_view system, std::string_view laue, std::string_view point_group) {
        found = {std::string(laue), std::string(point_group), std::string(system)};
        return Status::Done();
    }

    // Is there a rotation of order `order` (2 or -2) whose axis fits?
    template <class Fits>
    bool Any_Axis(int order, Fits fits) const {
        return std::any_of(rotations_.begin(), rotations_.end(),
                           [&](const Rotation& r) { return Rotation_Order(r) == order && fits(Twofold_Axis(r)); });
    }

    std::string_view Orthorhombic() const {
        if (centric_) return "mmm";
        if (proper_) return "222";
        if (Any_Axis(2, [](const Hkl& v) { return v == Hkl{1, 0, 0}; })) return "2mm";
        return Any_Axis(2, [](const Hkl& v) { return v == Hkl{0, 1, 0}; }) ? "m2m" : "mm2";
    }

    std::string_view Tetragonal() const {
        if (centric_) return "4/mmm";
        if (proper_) return "422";
        if (orders_[4] > 0) return "4mm";
        return Any_Axis(2, [](const Hkl& v) { return Nonzero(v) == 2; }) ? "-4m2" : "-42m";
    }

    // Along an edge a, b or -a-b of the hexagonal net; else between two of them.
    static bool Along_Edge(const Hkl& v) { return Nonzero(v) == 1 || v == Hkl{1, 1, 0}; }

    std::string_view Hexagonal() const {
        if (centric_) return "6/mmm";
        if (proper_) return "622";
        if (orders_[6] > 0) return "6mm";
        return Any_Axis(2, Along_Edge) ? "-62m" : "-6m2";
    }

    Status Trigonal(Point_Class& found) const {
        const bool along_edge = !hexagonal_ || Any_Axis(2, Along_Edge) || Any_Axis(-2, Along_Edge);
        const std::string_view laue = !hexagonal_ ? "-3m" : along_edge ? "-3m1" : "-31m";
        if (centric_) return Give(found, trigonal, laue, along_edge ? "-3m" : "-31m");
        if (proper_) return Give(found, trigonal, laue, along_edge ? "32" : "312");
        return Give(found, trigonal, laue, along_edge ? "3m" : "31m");
    }

    std::span<const Rotation> rotations_;
    Orders orders_;
    bool hexagonal_, centric_, proper_;
};

}  // namespace

// A column of R + 1 that is not 0 lies along the axis, for R the rotation of an axis or the negative of that of a plane.
Hkl Twofold_Axis(const Rotation& rot) {
    const Rotation r = Determinant(rot) > 0 ? rot : -rot;
    for (std::size_t j = 0; j < 3; ++j) {
        Hkl axis = {r[j], r[j + 3], r[j + 6]};
        axis[j] += 1;
        if (axis != Hkl{}) return Primitive(axis);
    }
    return {};
}

bool Hexagonal_Axes(std::span<const Rotation> rotations) {
    return std::any_of(rotations.begin(), rotations.end(), [](const Rotation& r) {
        for (std::size_t i = 0; i < 9; i += 3)
            if (std::abs(r[i]) + std::abs(r[i + 1]) + std::abs(r[i + 2]) > 1) return true;
        return false;
    });
}

Status Laue_And_Point_Group(std::span<const Rotation> rotations, Point_Class& found) { return Class_Finder(rotations).Find(found); }

}  // namespace vntl

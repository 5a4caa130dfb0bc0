#include "crystal/close_group.hpp"

#include <algorithm>
#include <bitset>
#include <cstring>
#include <string>

namespace vntl {

namespace {

constexpr int highest_entry = 4;  // of a rotation in any cell in use; products of two such fit into a byte
constexpr std::size_t most_reduced = 24;
constexpr std::size_t cells12 = twelfths * twelfths * twelfths;

std::size_t Cell_Of(const Translation12& t) { return static_cast<std::size_t>((t[0] * twelfths + t[1]) * twelfths + t[2]); }

Translation12 Sum(const Translation12& a, const Translation12& b) {
    Translation12 c;
    for (std::size_t i = 0; i < 3; ++i) c[i] = static_cast<std::int8_t>((a[i] + b[i]) % twelfths);
    return c;
}

Translation12 Difference(const Translation12& a, const Translation12& b) {
    Translation12 c;
    for (std::size_t i = 0; i < 3; ++i) c[i] = static_cast<std::int8_t>((a[i] - b[i] + twelfths) % twelfths);
    return c;
}

// The centring vectors, always a group of their own.
class Centrings {
public:
    Centrings() { known_.set(0); }

    bool Holds(const Translation12& t) const { return known_.test(Cell_Of(t)); }
    const std::vector<Translation12>& All() const { return all_; }

    void Add(const Translation12& t) {
        const std::size_t before = all_.size();
        for (Translation12 multiple = t; !Holds(multiple); multiple = Sum(multiple, t))
            for (std::size_t i = 0; i < before; ++i) {
                all_.push_back(Sum(all_[i], multiple));
                pending_.push_back(Cell_Of(all_.back()));
            }
        for (const std::size_t cell : pending_) known_.set(cell);
        pending_.clear();
    }

private:
    std::vector<Translation12> all_ = {{0, 0, 0}};
    std::vector<std::size_t> pending_;  // known only when all multiples are in, since a multiple may differ by a known vector
    std::bitset<cells12> known_;
};

bool Usable(const Rotation& rot) {
    return std::all_of(rot.begin(), rot.end(), [](int entry) { return std::abs(entry) <= highest_entry; }) && Rotation_Order(rot) != 0;
}

// Eight bytes at once: most of the time of a closing goes into this.
bool Same(const Rotation& a, const Rotation& b) {
    std::uint64_t first, second;
    std::memcpy(&first, a.data(), sizeof first);
    std::memcpy(&second, b.data(), sizeof second);
    return first == second && a[8] == b[8];
}

// One operator for each rotation; what two of one rotation differ by is a centring vector. All of those come from the products of the
// operators with the generators (O. Schreier 1927); of a generator that is a translation these are its rotated images.
class Closing {
public:
    Status Run(std::span<const Seitz> generators) {
        operators_.reserve(most_rotations + 1);
        for (const Seitz& generator : generators) {
            if (!Usable(generator.rot)) return Status::Fail(" Rotation Not Determined");
            if (const Status status = Keep(generator); status.failed) return status;
        }
        for (std::size_t i = 0; i < operators_.size(); ++i)
            for (const Seitz& generator : generators) {
                if (generator.rot == no_rotation) continue;
                if (const Status status = Keep(operators_[i] * generator); status.failed) return status;
            }
        return Turn_Centrings(generators);
    }

    void Give(Closed_Group& group) {
        group = {};
        group.lattice = centrings_.All();
        const auto inverse = std::find_if(operators_.begin(), operators_.end(), [](const Seitz& s) { return s.rot == inversion; });
        if (inverse == operators_.end()) {
            group.reduced = std::move(operators_);
            return;
        }
        group.inversion_tr = inverse->tr;
        for (const Translation12& t : group.lattice) group.inversion_tr = std::min(group.inversion_tr, Sum(inverse->tr, t));
        group.centring = group.inversion_tr == Translation12{} ? 2 : 0;
        group.reduced.clear();
        for (const Seitz& s : operators_)
            if (Determinant(s.rot) > 0) group.reduced.push_back(s);
    }

private:
    // Rotations take a lattice to itself.
    Status Turn_Centrings(std::span<const Seitz> generators) {
        for (std::size_t i = 1; i < centrings_.All().size(); ++i)
            for (const Seitz& generator : generators) {
                const Translation12 turned = (Seitz{generator.rot, {}} * Seitz{no_rotation, centrings_.All()[i]}).tr;
                if (centrings_.Holds(turned)) continue;
                centrings_.Add(turned);
                if (const Status status = Room(); status.failed) return status;
            }
        return Status::Done();
    }

    Status Keep(const Seitz& seitz) {
        const auto known = std::find_if(operators_.begin(), operators_.end(), [&](const Seitz& s) { return Same(s.rot, seitz.rot); });
        if (known != operators_.end()) {
            if (const Translation12 vector = Difference(seitz.tr, known->tr); !centrings_.Holds(vector)) centrings_.Add(vector);
            return Room();
        }
        if (!Usable(seitz.rot)) return Status::Fail(" Error in generators");
        operators_.push_back(seitz);
        proper_ += Determinant(seitz.rot) > 0 ? 1 : 0;
        return Room();
    }

    Status Room() const {
        if (operators_.size() > most_rotations || proper_ > most_reduced) return Status::Fail(" Dimension of Table exceeded (I)");
        const std::size_t all = operators_.size() * centrings_.All().size();
        if (all > most_operators) return Status::Fail(" Dimension of Table exceeded (II): " + std::to_string(all));
        return Status::Done();
    }

    std::vector<Seitz> operators_ = {Seitz{}};
    std::size_t proper_ = 1;
    Centrings centrings_;
};

using Subset = std::uint64_t;  // a bit for each rotation of the reduced set

// The products of rotations of a reduced set, as numbers in it; an inversion in a product of a centric group is left out.
class Product_Table {
public:
    explicit Product_Table(const std::vector<Seitz>& reduced) : size_(reduced.size()), products_(size_ * size_) {
        for (std::size_t i = 0; i < size_; ++i)
            for (std::size_t j = 0; j < size_; ++j) {
                const Rotation product = reduced[i].rot * reduced[j].rot;
                const auto at = std::find_if(reduced.begin(), reduced.end(), [&](const Seitz& s) { return s.rot == product; });
                products_[i * size_ + j] = static_cast<std::size_t>(at - reduced.begin());
            }
    }

    Subset All() const { return size_ == 64 ? ~Subset{0} : (Subset{1} << size_) - 1; }

    Subset Closure(const std::vector<std::size_t>& chosen) const {
        Subset found = 1;
        std::vector<std::size_t> list = {0};
        for (std::size_t i = 0; i < list.size(); ++i)
            for (const std::size_t generator : chosen) {
                const std::size_t product = products_[list[i] * size_ + generator];
                if ((found >> product & 1) != 0) continue;
                found |= Subset{1} << product;
                list.push_back(product);
            }
        return found;
    }

private:
    std::size_t size_;
    std::vector<std::size_t> products_;
};

bool Choose(const Product_Table& table, std::size_t size, std::size_t count, std::size_t first, std::vector<std::size_t>& chosen) {
    if (count == 0) return table.Closure(chosen) == table.All();
    for (std::size_t i = first; i < size; ++i) {
        chosen.push_back(i);
        if (Choose(table, size, count - 1, i + 1, chosen)) return true;
        chosen.pop_back();
    }
    return false;
}

struct Centring {
    char letter;
    std::vector<Translation12> vectors;
};

const std::vector<Centring>& Known_Centrings() {
    static const std::vector<Centring> known = {{'P', {{0, 0, 0}}},
                                                {'A', {{0, 0, 0}, {0, 6, 6}}},
                                                {'B', {{0, 0, 0}, {6, 0, 6}}},
                                                {'C', {{0, 0, 0}, {6, 6, 0}}},
                                                {'I', {{0, 0, 0}, {6, 6, 6}}},
                                                {'R', {{0, 0, 0}, {8, 4, 4}, {4, 8, 8}}},
                                                {'F', {{0, 0, 0}, {0, 6, 6}, {6, 0, 6}, {6, 6, 0}}}};
    return known;
}

}  // namespace

std::vector<Seitz> Closed_Group::Operators() const {
    std::vector<Seitz> all = reduced;
    all.reserve(Multip());
    if (centring != 1)
        for (std::size_t i = 0; i < reduced.size(); ++i) all.push_back({-reduced[i].rot, Difference(inversion_tr, reduced[i].tr)});
    const std::size_t one_lattice = all.size();
    for (std::size_t v = 1; v < lattice.size(); ++v)
        for (std::size_t i = 0; i < one_lattice; ++i) all.push_back({all[i].rot, Sum(all[i].tr, lattice[v])});
    return all;
}

std::vector<Rotation> Closed_Group::Rotations() const {
    std::vector<Rotation> rotations;
    for (const Seitz& s : reduced) {
        rotations.push_back(s.rot);
        if (centring != 1) rotations.push_back(-s.rot);
    }
    return rotations;
}

Status Close_Group(std::span<const Seitz> generators, Closed_Group& group) {
    Closing closing;
    if (const Status status = closing.Run(generators); status.failed) return status;
    closing.Give(group);
    return Status::Done();
}

std::vector<Seitz> Minimum_Generators(const Closed_Group& group) {
    const Product_Table table(group.reduced);
    std::vector<std::size_t> chosen;
    for (std::size_t count = 0; !Choose(table, group.reduced.size(), count, 1, chosen); ++count) chosen.clear();
    std::vector<Seitz> generators;
    for (const std::size_t i : chosen) generators.push_back(group.reduced[i]);
    return generators;
}

char Lattice_From_Vectors(std::span<const Translation12> lattice) {
    for (const Centring& known : Known_Centrings())
        if (std::is_permutation(lattice.begin(), lattice.end(), known.vectors.begin(), known.vectors.end())) return known.letter;
    return 'Z';
}

Status Lattice_From_Letter(char letter, std::vector<Translation12>& lattice) {
    if (letter == 'Z') return Status::Fail("Unconventional Lattice Symbol Z needs centring vectors");
    for (const Centring& known : Known_Centrings())
        if (known.letter == letter) {
            lattice = known.vectors;
            return Status::Done();
        }
    return Status::Fail(std::string("Wrong Lattice Symbol ") + letter);
}

}  // namespace vntl

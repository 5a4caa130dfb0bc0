// Wyckoff positions and asymmetric units against the International Tables (volume A) and by brute force over points, in whole multiples of
// a small fraction of the cell.
#include "crystal/wyckoff.hpp"

#include <cmath>
#include <map>
#include <random>
#include <set>

#include "crystal/asymmetric_unit.hpp"
#include "crystal/settings.hpp"
#include "crystal/testing.hpp"

namespace vntl {
namespace {

using test::Group;

using Point = std::array<int, 3>;
constexpr int part = 100003, cell = 48 * part;  // what is random in these units is special by intent alone

Point Reduced(Point p) {
    for (int& v : p) v = (v % cell + cell) % cell;
    return p;
}

Point Moved(const Sym_Oper_Type& op, const Point& p) {
    Point image;
    for (std::size_t i = 0; i < 3; ++i) {
        const double in_48 = op.tr[i] * 48.0;
        EXPECT_NEAR(in_48, std::round(in_48), 1e-4);
        image[i] = op.rot[i][0] * p[0] + op.rot[i][1] * p[1] + op.rot[i][2] * p[2] + static_cast<int>(std::lround(in_48)) * part;
    }
    return Reduced(image);
}

Sym_Oper_Type Read(const std::string& text) {
    Sym_Oper_Type read;
    EXPECT_TRUE(Read_Operator_String(text, 0, read, false).ok()) << text;
    return read;
}

std::vector<Point> Images(const Space_Group_Type& group, const Point& p) {
    std::vector<Point> images;
    for (const Sym_Oper_Type& op : group.operators) images.push_back(Moved(op, p));
    return images;
}

// All tabulated settings, and cells that only files have: one twice as large as need be, the primitive one of a face-centred cubic
// lattice, one with a centring of its own and the centre off the origin.
std::vector<Space_Group_Type> Groups() {
    std::vector<Space_Group_Type> groups;
    for (const Setting& setting : Settings()) groups.push_back(Group(setting.hall, "HAL"));
    groups.push_back(Group("", "GEN", {"x+1/2,y,z", "-x,-y,-z"}));
    groups.push_back(Group("", "GEN", {"x+y+z,-z,-x", "z,x,y", "-x,-y,-z"}));
    groups.push_back(Group("", "GEN", {"x+1/3,y+1/3,z+1/3", "-x+1/4,-y+5/12,-z"}));
    return groups;
}

std::string Name(const Space_Group_Type& group) { return group.hm_symbol + ' ' + group.hall_symbol + ' ' + group.general_hall; }

// "8:-43m" for each position, sites without their orientation.
std::multiset<std::string> Sites(const Space_Group_Type& group, int times = 1) {
    const std::map<std::string, std::string> plain = {{"m2m", "mm2"}, {"2mm", "mm2"},  {"-4m2", "-42m"}, {"31m", "3m"},
                                                      {"312", "32"},  {"-31m", "-3m"}, {"-62m", "-6m2"}};
    std::multiset<std::string> sites;
    for (const Wyckoff_Orbit& w : group.wyckoff)
        sites.insert(std::to_string(times * w.multiplicity) + ':' + (plain.contains(w.site) ? plain.at(w.site) : w.site));
    return sites;
}

TEST(Wyckoff, sites_are_those_of_the_tables) {
    // Multiplicity, site and the number of such positions.
    const std::pair<const char*, const char*> groups[] = {
        {"P 1", "1:1"},
        {"P -1", "1:-1*8 2:1"},
        {"P 2", "1:2*4 2:1"},
        {"P 21", "2:1"},
        {"C 2", "2:2*2 4:1"},
        {"P m", "1:m*2 2:1"},
        {"C c", "4:1"},
        {"P 2/m", "1:2/m*8 2:2*4 2:m*2 4:1"},
        {"P 21/m", "2:-1*4 2:m 4:1"},
        {"C 2/m", "2:2/m*4 4:-1*2 4:2*2 4:m 8:1"},
        {"P 2/c", "2:-1*4 2:2*2 4:1"},
        {"P 21/c", "2:-1*4 4:1"},
        {"P 21/n", "2:-1*4 4:1"},
        {"C 2/c", "4:-1*4 4:2 8:1"},
        {"P 2 2 2", "1:222*8 2:2*12 4:1"},
        {"P 21 21 21", "4:1"},
        {"C 2 2 21", "4:2*2 8:1"},
        {"F 2 2 2", "4:222*4 8:2*6 16:1"},
        {"P m m 2", "1:mm2*4 2:m*4 4:1"},
        {"F d d 2", "8:2 16:1"},
        {"P m m m", "1:mmm*8 2:mm2*12 4:m*6 8:1"},
        {"P b a m", "2:2/m*4 4:2*2 4:m*2 8:1"},
        {"P b c a", "4:-1*2 8:1"},
        {"P n m a", "4:-1*2 4:m 8:1"},
        {"P b n m", "4:-1*2 4:m 8:1"},
        {"C m c m", "4:2/m*2 4:mm2 8:-1 8:2 8:m*2 16:1"},
        {"F m m m", "4:mmm*2 8:2/m*3 8:222 8:mm2*3 16:2*3 16:m*3 32:1"},
        {"F d d d:1", "8:222*2 16:-1*2 16:2*3 32:1"},
        {"F d d d:2", "8:222*2 16:-1*2 16:2*3 32:1"},
        {"I m m m", "2:mmm*4 4:mm2*6 8:-1 8:m*3 16:1"},
        {"I b c a", "8:-1*2 8:2*3 16:1"},
        {"P 4", "1:4*2 2:2 4:1"},
        {"P 41", "4:1"},
        {"P -4", "1:-4*4 2:2*3 4:1"},
        {"I -4", "2:-4*4 4:2*2 8:1"},
        {"P 4/m", "1:4/m*4 2:2/m*2 2:4*2 4:2 4:m*2 8:1"},
        {"I 41/a:1", "4:-4*2 8:-1*2 8:2 16:1"},
        {"P 41 21 2", "4:2 8:1"},
        {"P 4/m m m", "1:4/mmm*4 2:mmm*2 2:4mm*2 4:mm2*7 8:m*5 16:1"},
        {"P 4/n m m:2", "2:-42m*2 2:4mm 4:2/m*2 4:mm2 8:2*2 8:m*2 16:1"},
        {"P 42/m n m", "2:mmm*2 4:2/m 4:-4 4:mm2*3 8:2 8:m*2 16:1"},
        {"I 4/m m m", "2:4/mmm*2 4:mmm 4:-42m 4:4mm 8:2/m 8:mm2*4 16:2 16:m*3 32:1"},
        {"I 41/a m d:1", "4:-42m*2 8:2/m*2 8:mm2 16:2*2 16:m 32:1"},
        {"I 41/a c d:2", "8:-4 8:222 16:-1 16:2*3 32:1"},
        {"P 3", "1:3*3 3:1"},
        {"P 31", "3:1"},
        {"R 3:H", "3:3 9:1"},
        {"R 3:R", "1:3 3:1"},
        {"P -3", "1:-3*2 2:3*2 3:-1*2 6:1"},
        {"R -3:H", "3:-3*2 6:3 9:-1*2 18:1"},
        {"P 3 2 1", "1:32*2 2:3*2 3:2*2 6:1"},
        {"P 31 2 1", "3:2*2 6:1"},
        {"R 3 m:H", "3:3m 9:m 18:1"},
        {"P -3 m 1", "1:-3m*2 2:3m*2 3:2/m*2 6:2*2 6:m 12:1"},
        {"R -3 m:H", "3:-3m*2 6:3m 9:2/m*2 18:2*2 18:m 36:1"},
        {"R -3 m:R", "1:-3m*2 2:3m 3:2/m*2 6:2*2 6:m 12:1"},
        {"R -3 c:H", "6:32 6:-3 12:3 18:-1 18:2 36:1"},
        {"P 6", "1:6 2:3 3:2 6:1"},
        {"P 63", "2:3*2 6:1"},
        {"P 63/m", "2:-6*3 2:-3 4:3*2 6:-1 6:m 12:1"},
        {"P 61 2 2", "6:2*2 12:1"},
        {"P 6/m m m", "1:6/mmm*2 2:-6m2*2 2:6mm 3:mmm*2 4:3m 6:mm2*5 12:m*4 24:1"},
        {"P 63/m m c", "2:-3m 2:-6m2*3 4:3m*2 6:2/m 6:mm2 12:2 12:m*2 24:1"},
        {"P 2 3", "1:23*2 3:222*2 4:3 6:2*4 12:1"},
        {"P 21 3", "4:3 12:1"},
        {"P a -3", "4:-3*2 8:3 24:1"},
        {"I a -3", "8:-3*2 16:3 24:2 48:1"},
        {"P 43 3 2", "4:32*2 8:3 12:2 24:1"},
        {"P -4 3 m", "1:-43m*2 3:-42m*2 4:3m 6:mm2*2 12:2 12:m 24:1"},
        {"F -4 3 m", "4:-43m*4 16:3m 24:mm2*2 48:m 96:1"},
        {"I -4 3 d", "12:-4*2 16:3 24:2 48:1"},
        {"P m -3 m", "1:m-3m*2 3:4/mmm*2 6:4mm*2 8:3m 12:mm2*3 24:m*3 48:1"},
        {"P m -3 n", "2:m-3 6:mmm 6:-42m*2 8:32 12:mm2*3 16:3 24:2 24:m 48:1"},
        {"F m -3 m", "4:m-3m*2 8:-43m 24:mmm 24:4mm 32:3m 48:mm2*3 96:m*2 192:1"},
        {"F d -3 m:1", "8:-43m*2 16:-3m*2 32:3m 48:mm2 96:2 96:m 192:1"},
        {"F d -3 m:2", "8:-43m*2 16:-3m*2 32:3m 48:mm2 96:2 96:m 192:1"},
        {"F d -3 c:2", "16:23 32:32 32:-3 48:-4 64:3 96:2*2 192:1"},
        {"I m -3 m", "2:m-3m 6:4/mmm 8:-3m 12:-42m 12:4mm 16:3m 24:mm2*2 48:2 48:m*2 96:1"},
        {"I a -3 d", "16:-3 16:32 24:222 24:-4 32:3 48:2*2 96:1"},
    };
    for (const auto& [symbol, told] : groups) {
        std::multiset<std::string> expected;
        std::istringstream words(told);
        for (std::string word; words >> word;) {
            const std::size_t star = word.find('*');
            const int times = star == std::string::npos ? 1 : std::stoi(word.substr(star + 1));
            for (int i = 0; i < times; ++i) expected.insert(word.substr(0, star));
        }
        EXPECT_EQ(Sites(Group(symbol)), expected) << symbol;
    }
    // The same group in a primitive cell has a quarter of the points.
    EXPECT_EQ(Sites(Group("", "GEN", {"x+y+z,-z,-x", "z,x,y", "-x,-y,-z"}), 4), Sites(Group("F m -3 m")));
}

TEST(Wyckoff, coordinates_are_those_of_the_tables) {
    const std::pair<const char*, std::vector<const char*>> firsts[] = {
        {"P n m a", {"0,0,0", "0,0,1/2", "x,1/4,z", "x,y,z"}},
        {"C 2/c", {"0,0,0", "0,1/2,0", "1/4,1/4,0", "1/4,1/4,1/2", "0,y,1/4", "x,y,z"}},
        {"R -3 m:H", {"0,0,0", "0,0,1/2", "0,0,z", "1/2,0,0", "1/2,0,1/2", "x,0,0", "x,0,1/2", "x,2x,z", "x,y,z"}},
        {"P 63/m m c",
         {"0,0,0", "0,0,1/4", "1/3,2/3,1/4", "2/3,1/3,1/4", "0,0,z", "1/3,2/3,z", "1/2,0,0", "x,2x,1/4", "x,0,0", "x,2x,z", "x,y,1/4",
          "x,y,z"}},
        {"F m -3 m",
         {"0,0,0", "1/2,1/2,1/2", "1/4,1/4,1/4", "0,1/4,1/4", "x,0,0", "x,x,x", "0,y,y", "x,1/4,1/4", "1/2,y,y", "0,y,z", "x,x,z",
          "x,y,z"}},
        {"F d -3 m:2", {"1/8,1/8,1/8", "3/8,3/8,3/8", "0,0,0", "1/2,1/2,1/2", "x,x,x", "x,1/8,1/8", "0,y,-y", "x,x,z", "x,y,z"}},
    };
    for (const auto& [symbol, expected] : firsts) {
        std::vector<std::string> got;
        for (const Wyckoff_Orbit& w : Group(symbol).wyckoff) got.push_back(w.orbit.front());
        EXPECT_EQ(got, std::vector<std::string>(expected.begin(), expected.end())) << symbol;
    }
    const auto orbit = [](const char* symbol, std::size_t position) {
        const std::vector<std::string> texts = Group(symbol).wyckoff.at(position).orbit;
        return std::set<std::string>(texts.begin(), texts.end());
    };
    using Texts = std::set<std::string>;
    EXPECT_EQ(orbit("P n m a", 2), (Texts{"x,1/4,z", "-x+1/2,3/4,z+1/2", "-x,3/4,-z", "x+1/2,1/4,-z+1/2"}));
    EXPECT_EQ(orbit("P 63/m m c", 7), (Texts{"x,2x,1/4", "-2x,-x,1/4", "x,-x,1/4", "-x,-2x,3/4", "2x,x,3/4", "-x,x,3/4"}));
    EXPECT_EQ(orbit("C 2/c", 4), (Texts{"0,y,1/4", "0,-y,3/4"}));
}

// A point of each position with random parameters has as many images as told; they are the told ones with the centring vectors, each once.
TEST(Wyckoff, orbits_have_the_told_points) {
    std::mt19937 random(16);
    for (const Space_Group_Type& group : Groups()) {
        SCOPED_TRACE(Name(group));
        ASSERT_FALSE(group.wyckoff.empty());
        EXPECT_EQ(group.wyckoff.back().multiplicity, group.Multip);
        EXPECT_EQ(group.wyckoff.back().orbit.front(), "x,y,z");
        EXPECT_TRUE(std::is_sorted(group.wyckoff.begin(), group.wyckoff.end(),
                                   [](const Wyckoff_Orbit& a, const Wyckoff_Orbit& b) { return a.multiplicity < b.multiplicity; }));
        for (const Wyckoff_Orbit& w : group.wyckoff) {
            SCOPED_TRACE(w.orbit.front());
            const Point parameters = {static_cast<int>(random() % cell), static_cast<int>(random() % cell),
                                      static_cast<int>(random() % cell)};
            std::set<Point> told;
            for (const std::string& text : w.orbit) {
                Sym_Oper_Type form = Read(text);
                for (const auto& vector : group.lattice_vectors) {
                    Sym_Oper_Type shifted = form;
                    for (std::size_t i = 0; i < 3; ++i) {
                        EXPECT_TRUE(form.tr[i] >= 0 && form.tr[i] < 1) << text;
                        shifted.tr[i] += vector[i];
                    }
                    told.insert(Moved(shifted, parameters));
                }
            }
            const std::vector<Point> images = Images(group, Moved(Read(w.orbit.front()), parameters));
            EXPECT_EQ(told, std::set<Point>(images.begin(), images.end()));
            EXPECT_EQ(told.size(), static_cast<std::size_t>(w.multiplicity));
            EXPECT_EQ(w.orbit.size() * group.lattice_vectors.size(), static_cast<std::size_t>(w.multiplicity));
        }
    }
}

// Points of a coarse grid, and such with one random coordinate: the operators that fix one tell its multiplicity, and just one position of
// this multiplicity goes through one of its images. A parameter is the coordinate of its name, so that an image tells the parameters.
TEST(Wyckoff, each_point_lies_on_one_position) {
    std::mt19937 random(161);
    for (const Space_Group_Type& group : Groups()) {
        SCOPED_TRACE(Name(group));
        std::vector<Sym_Oper_Type> forms;
        for (const Wyckoff_Orbit& w : group.wyckoff) forms.push_back(Read(w.orbit.front()));
        for (int trial = 0; trial < 40; ++trial) {
            const int step = std::array{cell / 24, cell / 12, cell / 8, cell / 4}[random() % 4];
            Point p;
            for (int& v : p) v = static_cast<int>(random() % 24) * step % cell;
            if (trial % 2 == 1) p[random() % 3] = static_cast<int>(random() % cell);
            if (trial % 8 >= 6) p[1] = p[0], p[2] = trial % 16 >= 8 ? p[0] : p[2];
            const std::vector<Point> images = Images(group, p);
            const auto fixing = std::count(images.begin(), images.end(), p);
            int lies_on = 0;
            for (std::size_t i = 0; i < forms.size(); ++i)
                if (group.wyckoff[i].multiplicity * fixing == group.Multip)
                    lies_on += std::any_of(images.begin(), images.end(), [&](const Point& q) { return Moved(forms[i], q) == q; });
            EXPECT_EQ(lies_on, 1) << p[0] << ' ' << p[1] << ' ' << p[2] << " of " << cell;
        }
    }
}

// The same groups in cells that are sheared at random: rotations have entries far above 1 there.
TEST(Wyckoff, sites_stay_in_any_cell) {
    std::mt19937 random(163);
    for (int trial = 0; trial < 200; ++trial) {
        Space_Group_Type group = Group(Settings()[random() % Settings().size()].hall, "HAL");
        SCOPED_TRACE(Name(group));
        Seitz shear, back;
        for (int i = 0; i < 3; ++i) {
            const std::size_t at = std::array{1, 2, 3, 5, 6, 7}[random() % 6];
            Seitz step, undone;
            step.rot[at] = random() % 2 == 0 ? 1 : -1;
            undone.rot[at] = static_cast<std::int8_t>(-step.rot[at]);
            shear = step * shear;
            back = back * undone;
        }
        std::vector<Seitz> operators;
        std::vector<Translation12> lattice;
        for (const Seitz& op : Exact_Operators(group)) {
            operators.push_back(shear * op * back);
            if (op.rot == no_rotation) lattice.push_back(operators.back().tr);
        }
        const std::multiset<std::string> sites = Sites(group);
        group.wyckoff = Wyckoff_Positions(operators, lattice);
        EXPECT_EQ(Sites(group), sites);
        for (const Wyckoff_Orbit& w : group.wyckoff) EXPECT_EQ(w.orbit.size() * lattice.size(), static_cast<std::size_t>(w.multiplicity));
    }
}

TEST(Asymmetric_Box, each_point_has_an_image_in_it) {
    std::mt19937 random(162);
    for (const Space_Group_Type& group : Groups()) {
        SCOPED_TRACE(Name(group));
        double volume = 1;
        for (const auto& [low, high] : group.asym_unit) volume *= high - low;
        EXPECT_GT(volume * group.Multip, 1 - 1e-5);
        // In these systems a box can be an asymmetric unit, and in all tabulated settings one is.
        const std::string& system = group.crystal_system;
        if (group.spg_number != 0 && (system == "Triclinic" || system == "Monoclinic" || system == "Orthorhombic")) {
            EXPECT_LT(volume * group.Multip, 1 + 1e-5);
        }
        const auto inside = [&](const Point& p) {
            for (std::size_t i = 0; i < 3; ++i) {
                const long low = std::lround(group.asym_unit[i][0] * cell), high = std::lround(group.asym_unit[i][1] * cell);
                const long least = low + ((p[i] - low) % cell + cell) % cell;
                if (least > high) return false;
            }
            return true;
        };
        for (int trial = 0; trial < 200; ++trial) {
            Point p;
            for (int& v : p) v = trial < 150 ? static_cast<int>(random() % cell) : static_cast<int>(random() % 24) * (cell / 24);
            const std::vector<Point> images = Images(group, p);
            ASSERT_TRUE(std::any_of(images.begin(), images.end(), inside)) << p[0] << ' ' << p[1] << ' ' << p[2] << " of " << cell;
        }
    }
}

TEST(Asymmetric_Box, bounds_are_those_of_the_tables) {
    // In 1/24, of groups whose tabulated unit is a box; those with another one have the smallest box from the origin.
    const std::pair<const char*, std::array<int, 6>> groups[] = {
        {"P 1", {0, 24, 0, 24, 0, 24}},      {"P -1", {0, 12, 0, 24, 0, 24}},    {"P 21/m", {0, 24, 0, 6, 0, 24}},
        {"C 2/c", {0, 12, 0, 12, 0, 12}},    {"P 2 2 2", {0, 12, 0, 12, 0, 24}}, {"P 21 21 21", {0, 12, 0, 12, 0, 24}},
        {"F 2 2 2", {0, 6, 0, 6, 0, 24}},    {"P m m m", {0, 12, 0, 12, 0, 12}}, {"P n m a", {0, 12, 0, 6, 0, 24}},
        {"C m c m", {0, 12, 0, 12, 0, 6}},   {"F d d d:1", {0, 3, 0, 6, 0, 24}}, {"I m m a", {0, 6, 0, 6, 0, 24}},
        {"P 4/m", {0, 12, 0, 12, 0, 12}},    {"I 4 2 2", {0, 12, 0, 12, 0, 6}},  {"P 41 2 2", {0, 24, 0, 24, 0, 3}},
        {"P 3", {0, 16, 0, 16, 0, 24}},      {"P 61", {0, 24, 0, 24, 0, 4}},     {"P 63/m m c", {0, 16, 0, 16, 0, 6}},
        {"P m -3 m", {0, 12, 0, 12, 0, 12}},
    };
    for (const auto& [symbol, bounds] : groups) {
        const Space_Group_Type group = Group(symbol);
        for (std::size_t i = 0; i < 6; ++i) EXPECT_FLOAT_EQ(group.asym_unit[i / 2][i % 2], static_cast<float>(bounds[i]) / 24) << symbol;
    }
    EXPECT_LT(Group("P 4/n:2").asym_unit[1][0] + Group("P 4/n:2").asym_unit[0][0], 1);
    // What is no group at all has the whole cell.
    const std::vector<Seitz> none = {{{7, 3, 0, 2, 1, 5, 0, 9, 1}, {1, 0, 0}}};
    EXPECT_EQ(Asymmetric_Box(none), (std::array<std::array<int, 2>, 3>{{{0, 24}, {0, 24}, {0, 24}}}));
}

}  // namespace
}  // namespace vntl

#include "nexus/facts.hpp"

#include <deque>

namespace vntl::nexus {

namespace {

constexpr int deepest = 7;
constexpr std::size_t most_objects = 6000, most_facts = 600, most_of_a_group = 300;

struct Place {
    std::string path;
    int depth;
};

}  // namespace

void Tell_Facts(const Handle& entry, const std::function<void(const Fact&)>& tell) {
    std::deque<Place> groups = {{"", 0}};
    std::size_t objects = 0, facts = 0;
    while (!groups.empty() && objects < most_objects) {
        const Place place = groups.front();
        groups.pop_front();
        const Handle group = Open_Object(entry.get(), place.path.empty() ? "." : place.path);
        const std::string kind = Attribute_Text(group, "NX_class");
        for (const std::string& name : Members(group, most_of_a_group)) {
            if (++objects > most_objects || facts >= most_facts) return;
            const std::string path = place.path.empty() ? name : place.path + '/' + name;
            const Handle object = Open_Object(entry.get(), path);
            if (Is_Group(object) && place.depth < deepest) groups.push_back({path, place.depth + 1});
            if (!Is_Data_Set(object)) continue;
            const auto value = Single_Value(object);
            if (!value) continue;
            tell({path, kind, Attribute_Text(object, "units"), *value});
            ++facts;
        }
    }
}

}  // namespace vntl::nexus

#include "nexus/plot_data.hpp"

#include <algorithm>
#include <deque>
#include <utility>

#include "base/text.hpp"

namespace vntl::nexus {

namespace {

constexpr int deepest = 8;                 // groups within groups
constexpr std::size_t most_groups = 3000;  // that are looked at
constexpr std::string_view no_data = "This HDF5 file holds no NXdata, and so no pattern";

std::string Class_Of(const Handle& group) { return Attribute_Text(group, "NX_class"); }

std::string Quoted(const std::string& name) { return '"' + std::string(Cut(To_Utf8(name), 40)) + '"'; }

// "a", "a,b", "a:b" and "[a, b]" are lists of names.
std::vector<std::string> Names_Of(const std::vector<std::string>& texts) {
    std::vector<std::string> names;
    for (const std::string& text : texts)
        for (std::size_t from = 0; from <= text.size();) {
            const std::size_t end = std::min(text.find_first_of(",:", from), text.size());
            std::string_view name = Trim(std::string_view(text).substr(from, end - from));
            if (name.starts_with('[')) name.remove_prefix(1);
            if (name.ends_with(']')) name.remove_suffix(1);
            names.emplace_back(Trim(name));
            from = end + 1;
        }
    return names;
}

Array Array_Of(const Handle& group, const std::string& name) {
    if (name.empty() || name == ".") return {};
    Handle object = Open_Object(group.get(), name);
    if (!Is_Data_Set(object)) return {};
    Array_Form form = Form_Of(object);
    return {std::move(object), name, std::move(form)};
}

// The axis of n bins, their edges, or of all frames' bins.
bool Fits(const Array& axis, std::size_t points, std::size_t frames) {
    const auto& shape = axis.form.shape;
    if (!axis || !axis.form.fault.empty()) return false;
    if (shape.size() == 1) return shape[0] == points || shape[0] == points + 1;
    return shape.size() == 2 && shape[0] == frames && (shape[1] == points || shape[1] == points + 1);
}

// A group with its members, among which the data to plot are sought.
class Data_Group {
public:
    explicit Data_Group(const Handle& group) : group_(group), members_(Members(group, 400)) {}

    std::optional<Plot_Data> Find(std::string& refusal) {
        Plot_Data data;
        data.signal = Signal();
        if (!data.signal) return Refused(refusal, "An NXdata of this file tells no signal, and so no pattern");
        const Array_Form& form = data.signal.form;
        const std::string name = "The signal " + Quoted(data.signal.name) + " of this file ";
        if (!form.fault.empty()) return Refused(refusal, name + form.fault);
        if (form.shape.empty()) return Refused(refusal, name + "is a single number, not a pattern");
        if (form.shape.size() > 2)
            return Refused(refusal, name + "has " + std::to_string(form.shape.size()) + " dimensions: patterns have one or two");
        if (!Find_X(data))
            return Refused(refusal, name + (form.shape.size() == 2 ? "is an image without an axis of patterns" : "has no axis"));
        data.errors = Errors(data.signal);
        return data;
    }

private:
    static std::optional<Plot_Data> Refused(std::string& refusal, const std::string& sentence) {
        refusal = sentence;
        return {};
    }

    Array Signal() {
        if (Array told = Array_Of(group_, Attribute_Text(group_, "signal"))) return told;
        for (const std::string& name : members_)  // of older files: the data set says so itself
            if (Handle object = Open_Object(group_.get(), name); Is_Data_Set(object) && Attribute_Text(object, "signal") == "1")
                return Array_Of(group_, name);
        return {};
    }

    // Names of the axes of a signal's dimensions, those of length 1 left out.
    std::vector<std::string> Axes(const Array& signal) const {
        std::vector<std::string> names = Names_Of(Attribute_Texts(group_, "axes"));
        if (names.empty()) names = Names_Of(Attribute_Texts(signal.data_set, "axes"));
        const std::size_t rank = signal.form.shape.size();
        const Handle space(H5Dget_space(signal.data_set.get()), H5Sclose);
        std::vector<hsize_t> whole(static_cast<std::size_t>(std::max(H5Sget_simple_extent_ndims(space.get()), 0)));
        if (!whole.empty()) H5Sget_simple_extent_dims(space.get(), whole.data(), nullptr);
        if (names.size() == whole.size()) {
            std::vector<std::string> kept;
            for (std::size_t i = 0; i < whole.size(); ++i)
                if (whole[i] != 1) kept.push_back(names[i]);
            return kept;
        }
        while (names.size() < rank) names.insert(names.begin(), ".");  // the last ones are told
        return {names.end() - static_cast<std::ptrdiff_t>(rank), names.end()};
    }

    // Of older files, and of those whose list of axes leads nowhere: a data set that calls itself an axis, or tells units.
    Array Unnamed_Axis(const Array& signal, std::size_t points, std::size_t frames) const {
        for (const char* const mark : {"axis", "units"})
            for (const std::string& name : members_) {
                if (name == signal.name) continue;
                const Handle object = Open_Object(group_.get(), name);
                if (!Is_Data_Set(object) || Attribute_Text(object, mark).empty() || Contains(Lower(name), "error")) continue;
                if (Array axis = Array_Of(group_, name); Fits(axis, points, frames)) return axis;
            }
        return {};
    }

    bool Find_X(Plot_Data& data) const {
        const std::vector<std::string> axes = Axes(data.signal);
        const auto& shape = data.signal.form.shape;
        data.points = shape.back();
        data.count = shape.size() == 2 ? shape.front() : 0;
        data.x = Array_Of(group_, axes.back());
        if (!Fits(data.x, data.points, data.count)) data.x = {};
        if (shape.size() == 2 && !data.x) {
            data.x = Array_Of(group_, axes.front());
            data.x_first = data.x.form.shape.size() == 1 && Fits(data.x, shape.front(), 0);
            if (data.x_first) {
                std::swap(data.points, data.count);
                return true;
            }
            data.x = {};
        }
        if (!data.x) data.x = Unnamed_Axis(data.signal, data.points, data.count);
        if (shape.size() == 2 && axes.front() != data.x.name) data.frames = Array_Of(group_, axes.front());
        if (data.frames.form.shape.size() != 1 || !data.frames.form.fault.empty() || data.frames.form.points != data.count)
            data.frames = {};
        return static_cast<bool>(data.x);
    }

    Array Errors(const Array& signal) const {
        for (const std::string& name :
             {Attribute_Text(signal.data_set, "uncertainties"), signal.name + "_errors", std::string("errors"),
              signal.name + "_uncertainties", Attribute_Text(group_, "uncertainties"), std::string("uncertainties")})
            if (Array errors = Array_Of(group_, name); errors && errors.form.fault.empty() && errors.form.shape == signal.form.shape)
                return errors;
        return {};
    }

    const Handle& group_;
    std::vector<std::string> members_;
};

// A group and the entry that it belongs to.
struct Place {
    std::string path, entry;
    int depth;
};

std::string Below(const std::string& path, const std::string& name) {
    if (name.starts_with('/')) return name;
    return path == "/" ? path + name : path + '/' + name;
}

class Finder {
public:
    explicit Finder(const Handle& root) : root_(root) {}

    Found Find() {
        if (!Follow_Defaults() && !Search("/")) found_.refusal = Why_None();
        if (!found_.entry) found_.entry = Open_Object(root_.get(), "/");
        return std::move(found_);
    }

private:
    std::string Why_None() const {
        if (Leads_Elsewhere()) return "The data of this HDF5 file lie in another one, to which it has a link: open that";
        return refusal_.empty() ? std::string(no_data) : refusal_;
    }

    // Takes a group's data if it has any that are a pattern. The first fault that was met is told.
    bool Take(const Handle& group, const std::string& entry) {
        std::string refusal;
        found_.data = Data_Group(group).Find(refusal);
        if (!found_.data) {
            if (refusal_.empty()) refusal_ = refusal;
            return false;
        }
        found_.entry = Open_Object(root_.get(), entry);
        return true;
    }

    bool Follow_Defaults() {
        std::string path = "/", entry = "/";
        for (int depth = 0; depth < deepest; ++depth) {
            const Handle group = Open_Object(root_.get(), path);
            if (!Is_Group(group)) return false;
            const std::string kind = Class_Of(group);
            if (kind == "NXentry") entry = path;
            if (kind == "NXdata") return Take(group, entry);
            const std::string next = Attribute_Text(group, "default");
            if (next.empty()) return path != "/" && Search(path);
            path = Below(path, next);
            if (entry == "/") entry = Entry_Of(path);
        }
        return false;
    }

    // The NXentry that a path leads through.
    std::string Entry_Of(const std::string& path) const {
        for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1))
            if (std::string above = path.substr(0, end); Class_Of(Open_Object(root_.get(), above)) == "NXentry") return above;
        return "/";
    }

    // Groups from one down, those of less depth first.
    bool Search(const std::string& from) {
        std::deque<Place> places = {{from, Entry_Of(from + "/"), 0}};
        for (std::size_t looked_at = 0; !places.empty() && looked_at < most_groups; ++looked_at) {
            Place place = std::move(places.front());
            places.pop_front();
            const Handle group = Open_Object(root_.get(), place.path);
            if (!Is_Group(group)) continue;
            const std::string kind = Class_Of(group);
            if (kind == "NXentry") place.entry = place.path;
            if (kind == "NXdata" && Take(group, place.entry)) return true;
            if (place.depth == deepest || places.size() > most_groups) continue;
            for (const std::string& name : Members(group)) places.push_back({Below(place.path, name), place.entry, place.depth + 1});
        }
        return false;
    }

    const Handle& root_;
    Found found_;
    std::string refusal_;
};

}  // namespace

Found Find_Plot_Data(const Handle& root) { return Finder(root).Find(); }

}  // namespace vntl::nexus

#include "session/desk/kept_view.hpp"

#include <cmath>

#include "session/desk/overlay_place.hpp"
#include "session/desk/waterfall.hpp"
#include "session/ranges.hpp"
#include "session/whole_range.hpp"

namespace vntl {

namespace {

constexpr float alike = 1e-4f;  // of the height: two ends that no eye tells apart

Extent_Of_Rows Extent_Of_Range(const Profile_Store& store, const Plot_State& plot) {
    const Y_Scale scale = plot.Scale();
    return {On_Scale(scale, plot.y_all_min), static_cast<double>(On_Scale(scale, plot.y_all_max)) + Height_Of_Waterfall(store, plot)};
}

Extent_Of_Rows Extent_Of_Points(const Profile_Store& store, const Plot_State& plot) {
    return Extent_In_View(store, plot, Row_Offsets(store, plot));
}

float Foot_Of_Whole(const Profile_Store& store, Plot_State plot, const Look& look, const View& whole) {
    plot.Show(whole);
    return Foot_Of_Data(store, plot, look);
}

// The room that a focus, or logarithms, left below the data for the overlay of a refined profile.
bool Has_Room_Below(const Profile_Store& store, const Plot_State& plot) { return store.prf_loaded && plot.y_view_min == plot.y_prf_bottom; }

}  // namespace

Kept_View::Kept_View(const Profile_Store& store, const Plot_State& plot, const Look& look)
    : scale_(plot.Scale()),
      view_(plot.Shown_View()),
      whole_(Whole_On_Scale(store, plot, scale_)),
      waterfall_(Height_Of_Waterfall(store, plot)),
      band_(Part_Of_Band(store, plot, look)),
      foot_(Foot_Of_Data(store, plot, look)),
      on_whole_foot_(view_.y1 == whole_.y1 ||
                     std::fabs(foot_ - Foot_Of_Whole(store, plot, look, whole_)) <= alike * (whole_.y2 - whole_.y1)),
      shown_(Height_Shown(store, plot)) {
    if (band_ == 0 && Has_Room_Below(store, plot)) foot_ = plot.diff_base + plot.diff_band;
}

Kept_View::Shown Kept_View::Height_Shown(const Profile_Store& store, const Plot_State& plot) {
    const auto holds = [&](const Extent_Of_Rows& extent) {
        if (!(extent.foot <= extent.top && view_.y1 <= extent.foot && view_.y2 >= extent.top)) return false;
        margin_ = view_.y2 - extent.top;
        height_ = extent.top - extent.foot;
        return true;
    };
    if (!plot.Is_2D()) return Shown::part;
    if (view_.y2 == Top_Of_Whole(plot) + waterfall_) return Shown::whole;
    if (holds(Extent_Of_Range(store, plot))) return Shown::range;
    return holds(Extent_Of_Points(store, plot)) ? Shown::points : Shown::part;
}

// The margin above the highest point stays; on another scale it is the same part of the height.
float Kept_View::New_Top(const Profile_Store& store, const Plot_State& plot) const {
    // Not by way of the margin, which many steps of a slider would wear off.
    if (shown_ == Shown::whole) return Top_Of_Whole(plot) + Height_Of_Waterfall(store, plot);
    const Extent_Of_Rows now = shown_ == Shown::range ? Extent_Of_Range(store, plot) : Extent_Of_Points(store, plot);
    const bool by_height = plot.Scale() != scale_ && height_ > 0;
    return static_cast<float>(now.top + (by_height ? margin_ / height_ * (now.top - now.foot) : margin_));
}

// Logarithms begin at one count: a view from there on shows all below.
float Kept_View::New_Foot_Of_Data(float foot_of_whole, Y_Scale scale) const {
    if (on_whole_foot_) return foot_of_whole;
    if (scale == scale_) return foot_;
    const float foot = On_Scale(scale, Off_Scale(scale_, foot_));
    const bool below_one = (scale_ == Y_Scale::logarithm && foot_ <= alike) || (scale == Y_Scale::logarithm && foot <= alike);
    return below_one ? foot_of_whole : foot;
}

bool Kept_View::Show(const Profile_Store& store, Plot_State& plot, const Look& look) const {
    const Y_Scale scale = plot.Scale();
    if (scale != scale_) {
        if (shown_ == Shown::whole) plot.y_view_max = whole_.y2;
        if (band_ > 0 && on_whole_foot_) plot.y_view_min = whole_.y1;
        View_On_Scale(store, plot, scale_, scale);
    }
    View view = plot.Shown_View();
    const float waterfall = Height_Of_Waterfall(store, plot), band = Part_Of_Band(store, plot, look);
    const bool higher = waterfall != waterfall_ || (scale != scale_ && waterfall > 0);
    if (shown_ != Shown::part && higher) view.y2 = New_Top(store, plot);
    const bool other_box = scale != scale_ || band != band_ || view.y2 != view_.y2;
    if ((band > 0 || band_ > 0) && other_box) {
        const View whole = Whole_On_Scale(store, plot, scale);
        const float foot = New_Foot_Of_Data(Foot_Of_Whole(store, plot, look, whole), scale);
        if (on_whole_foot_ && view.y2 == whole.y2)
            view.y1 = whole.y1;
        else if (foot < view.y2)
            view.y1 = Foot_Of_Box(store, plot, look, foot, view.y2);
    }
    return plot.Show(view);
}

}  // namespace vntl

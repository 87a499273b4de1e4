#include "pages/narrow_row.h"

#include <QPushButton>
#include <algorithm>
#include <vector>

#include "pages/fitted_text.h"
#include "uikit/dialog_builder.h"

namespace ostrova::pages {
namespace {

// Between the controls of a row that has room after all.
constexpr int RoomyGap = 8;

struct Place {
    QWidget* control = nullptr;
    int wanted = 0;  // the width that the template gives it, or more where its text needs more
    int needed = 0;  // the least in which all of it can be read
};

Place PlaceOf(QWidget& control) {
    const int given = std::max(control.width(), 1);
    if (const auto* button = qobject_cast<const QPushButton*>(&control)) {
        const int needed = NeededWidth(*button);
        return {&control, std::max(given, needed), needed};
    }
    return {&control, given, std::clamp(control.minimumSizeHint().width(), 1, given)};
}

std::vector<Place> PlacesOf(const QWidget& page, std::initializer_list<int> ids) {
    std::vector<Place> row;
    for (const int id : ids) {
        QWidget* control = uikit::ControlById(page, id);
        if (control != nullptr && !control->isHidden()) row.push_back(PlaceOf(*control));
    }
    return row;
}

int EndOf(const QWidget& control) {
    return control.x() + control.width();
}

/// Whether a text is cut, or controls stand too close.
bool MustShare(const QWidget& page, const std::vector<Place>& row, int gap) {
    for (const Place& place : row) {
        if (place.control->width() < place.needed) return true;
    }
    for (std::size_t i = 1; i < row.size(); ++i) {
        if (row[i].control->x() - EndOf(*row[i - 1].control) < gap) return true;
    }
    return EndOf(*row.back().control) > page.width();
}

/// Cuts the needed widths to `room` in all, the widest to one width: what is short stays whole.
void CutNeeds(std::vector<Place>& row, int room) {
    std::vector<int> needs;
    needs.reserve(row.size());
    for (const Place& place : row) needs.push_back(place.needed);
    std::sort(needs.begin(), needs.end());
    int most = needs.back();
    for (std::size_t i = 0; i < needs.size(); ++i) {
        const int fair = room / static_cast<int>(needs.size() - i);
        if (needs[i] > fair) {
            most = std::max(fair, 1);
            break;
        }
        room -= needs[i];
    }
    for (Place& place : row) place.needed = std::min(place.needed, most);
}

void Share(std::vector<Place>& row, int room) {
    CutNeeds(row, room);
    int wanted = 0;
    int needed = 0;
    for (const Place& place : row) {
        wanted += place.wanted;
        needed += place.needed;
    }
    const double spare = std::min(room, wanted) - needed;
    const double part = wanted > needed ? std::max(spare / (wanted - needed), 0.0) : 0;
    for (Place& place : row) {
        place.wanted = place.needed + static_cast<int>((place.wanted - place.needed) * part);
    }
}

}  // namespace

void KeepRowApart(const QWidget& page, std::initializer_list<int> ids, int gap) {
    std::vector<Place> row = PlacesOf(page, ids);
    if (row.empty()) return;
    if (MustShare(page, row, gap)) {
        int left = row.front().control->x();
        const int last = EndOf(*row.back().control);
        const int end = last <= page.width() ? last : page.width() - left;
        const int gaps = static_cast<int>(row.size()) - 1;
        Share(row, std::max(end - left - gap * gaps, 1));
        int taken = 0;
        for (const Place& place : row) taken += place.wanted;
        if (gap > 0 && taken + RoomyGap * gaps <= end - left) gap = RoomyGap;
        for (const Place& place : row) {
            const QRect now = place.control->geometry();
            // The last keeps to its edge: what is left over stands before it.
            if (&place == &row.back()) left = end - place.wanted;
            place.control->setGeometry(left, now.y(), place.wanted, now.height());
            left += place.wanted + gap;
        }
    }
    for (const Place& place : row) {
        if (auto* button = qobject_cast<QPushButton*>(place.control)) ElideText(*button);
    }
}

}  // namespace ostrova::pages

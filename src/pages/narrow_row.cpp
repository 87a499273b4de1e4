#include "pages/narrow_row.h"

#include <QPushButton>
#include <algorithm>
#include <vector>

#include "pages/fitted_text.h"
#include "uikit/dialog_builder.h"

namespace ostrova::pages {
namespace {

struct Place {
    QWidget* control = nullptr;
    int wanted = 0;  // the width that the template gives it
    int needed = 0;  // the least in which all of it can be read
};

int LeastWidth(const QWidget& control, int wanted) {
    const auto* button = qobject_cast<const QPushButton*>(&control);
    const int needed = button != nullptr ? NeededWidth(*button) : control.minimumSizeHint().width();
    return std::clamp(needed, 1, std::max(wanted, 1));
}

std::vector<Place> PlacesOf(const QWidget& page, std::initializer_list<int> ids) {
    std::vector<Place> row;
    for (const int id : ids) {
        QWidget* control = uikit::ControlById(page, id);
        if (control == nullptr || control->isHidden()) continue;
        const int wanted = control->width();
        row.push_back({control, wanted, LeastWidth(*control, wanted)});
    }
    return row;
}

int EndOf(const QWidget& control) {
    return control.x() + control.width();
}

bool Collides(const QWidget& page, const std::vector<Place>& row, int gap) {
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
    if (Collides(page, row, gap)) {
        int left = row.front().control->x();
        const int last = EndOf(*row.back().control);
        const int end = last <= page.width() ? last : page.width() - left;
        Share(row, std::max(end - left - gap * static_cast<int>(row.size() - 1), 1));
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

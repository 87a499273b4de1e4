#pragma once

// Each box and dialog of the toolkit with content that strains it.

#include <QDialog>
#include <QString>
#include <functional>
#include <vector>

namespace ostrova::gallery {

struct NamedBox {
    QString name;                            // for a button and a file name
    std::function<QDialog*(QWidget*)> make;  // not shown yet, owned by the widget given
};

[[nodiscard]] const std::vector<NamedBox>& Boxes();

}  // namespace ostrova::gallery

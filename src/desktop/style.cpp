// SPDX-License-Identifier: MIT
// The style's one change.
#include "desktop/style.h"

namespace quillon {

int MachineStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* result) const {
    if (hint == SH_MenuBar_AltKeyNavigation)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, result);
}

} // namespace quillon

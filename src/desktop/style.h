// SPDX-License-Identifier: MIT
// The platform's style, but for the one habit that gets in the machine's way: Alt opens no menu.
#pragma once

#include <QProxyStyle>

namespace quillon {

class MachineStyle : public QProxyStyle {
    Q_OBJECT

public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override;
};

} // namespace quillon

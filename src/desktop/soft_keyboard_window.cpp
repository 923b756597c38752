// SPDX-License-Identifier: MIT
// Drawing the soft keyboard, and the mouse on it.
#include "desktop/soft_keyboard_window.h"

#include "core/controls.h"
#include "desktop/catalogue_text.h"
#include "desktop/menus.h"
#include "desktop/pictures.h"
#include "desktop/soft_keyboard_accessibility.h"
#include "desktop/window_places.h"
#include "display/resources.h"
#include "keys/soft_keyboard.h"
#include "keys/soft_keys.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

#include <cmath>

namespace quillon {
namespace {

constexpr int SCALE = 2;
constexpr int LAYER_WIDTH = 224;
constexpr int LAYER_HEIGHT = 80;
constexpr int KEY_WIDTH = 16;
constexpr int KEY_HEIGHT = 20;
constexpr int BORDER = 2;
constexpr int LAYERS_BELOW = 3; ///< the picture has three layers below each other, and three more beside them

QRect layer_rectangle(int layer) {
    return {layer / LAYERS_BELOW * LAYER_WIDTH, layer % LAYERS_BELOW * LAYER_HEIGHT, LAYER_WIDTH, LAYER_HEIGHT};
}

/// The place of a key in its layer; the EXE key is twice as wide as the others.
QRect key_rectangle(int key) {
    const int width = key == SOFT_EXE_KEY ? 2 * KEY_WIDTH : KEY_WIDTH;
    return {key % SOFT_KEY_COLUMNS * KEY_WIDTH, key / SOFT_KEY_COLUMNS * KEY_HEIGHT, width, KEY_HEIGHT};
}

} // namespace

SoftKeyboardWindow::SoftKeyboardWindow(Session& session_, QWidget* main_window_, bool as_panel_)
    : QWidget(main_window_, as_panel_ ? Qt::Widget : Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus),
      session(session_), simulator(session_.simulator), main_window(main_window_), as_panel(as_panel_),
      picture(load_picture(SOFT_KEYBOARD_IMAGE)) {
    setWindowTitle("QZ-SIM SoftwareKeyboard.");
    setAccessibleName(command_name(simulator.machine.around->catalogue, COMMAND_SOFT_KEYBOARD));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setFixedSize(SCALE * LAYER_WIDTH + 2 * BORDER, SCALE * LAYER_HEIGHT + 2 * BORDER);
}

void SoftKeyboardWindow::dock() {
    if (as_panel)
        return;
    const QRect frame = main_window->frameGeometry();
    const QRect area = main_window->screen()->availableGeometry();
    const int joint = devicePixelRatioF() == 1 ? 0 : 1; // places are rounded on a scaled screen: no gap may be left
    const int below = frame.top() + frame.height() - joint;
    const int above = frame.top() - height() + joint;
    const bool fits_below = below + height() <= area.top() + area.height();
    const QPoint place = place_on_screen(*main_window, {frame.left(), fits_below ? below : above}, size());
    if (isVisible() && place == docked_place)
        return;
    docked_place = place;
    move(place);
}

void SoftKeyboardWindow::refresh() {
    const Drawn now{current_soft_layer(simulator.machine), simulator.machine.soft.soft_highlight};
    const Drawn before = std::exchange(drawn, now);
    if (before != now)
        update();
    if (before.layer != now.layer)
        announce_soft_keys(this);
}

QString SoftKeyboardWindow::key_name(int key) const {
    const SoftKey& soft = soft_key(current_soft_layer(simulator.machine), key);
    const MessageCatalogue& catalogue = simulator.machine.around->catalogue;
    return catalogue_text(catalogue, "SOFT_KEYS", soft_key_name_number(soft), soft_key_name(soft).c_str());
}

QRect SoftKeyboardWindow::key_area(int key) const {
    const QRect area = key_rectangle(key);
    return {BORDER + SCALE * area.left(), BORDER + SCALE * area.top(), SCALE * area.width(), SCALE * area.height()};
}

void SoftKeyboardWindow::click_key(int key) {
    session_input(session, {.verb = InputVerb::SOFT_DOWN, .numbers = {key / SOFT_KEY_COLUMNS, key % SOFT_KEY_COLUMNS}});
    session_input(session, {.verb = InputVerb::SOFT_UP});
}

void SoftKeyboardWindow::paintEvent(QPaintEvent*) {
    const Machine& m = simulator.machine;
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    painter.translate(BORDER, BORDER);
    painter.scale(SCALE, SCALE);
    painter.drawImage(QRect(0, 0, LAYER_WIDTH, LAYER_HEIGHT), picture, layer_rectangle(current_soft_layer(m)));
    if (m.soft.soft_highlight < 0)
        return;
    const QRect key = key_rectangle(m.soft.soft_highlight).adjusted(1, 1, -1, -1);
    painter.setCompositionMode(QPainter::CompositionMode_Difference); // the key's colours turn into their opposites
    painter.fillRect(key, Qt::white);
}

void SoftKeyboardWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const QPointF place = event->position() - QPointF(BORDER, BORDER);
    const int row = static_cast<int>(std::floor(place.y() / (SCALE * KEY_HEIGHT)));
    const int column = static_cast<int>(std::floor(place.x() / (SCALE * KEY_WIDTH)));
    const bool is_on_key =
        row >= 0 && row < SOFT_KEY_COUNT / SOFT_KEY_COLUMNS && column >= 0 && column < SOFT_KEY_COLUMNS;
    if (is_on_key) // and not on the border
        session_input(session, {.verb = InputVerb::SOFT_DOWN, .numbers = {row, column}});
    main_window->activateWindow();
}

void SoftKeyboardWindow::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        session_input(session, {.verb = InputVerb::SOFT_UP});
}

} // namespace quillon

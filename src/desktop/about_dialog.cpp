// SPDX-License-Identifier: MIT
// Composing the About window.
#include "desktop/about_dialog.h"

#include "desktop/catalogue_text.h"
#include "desktop/pictures.h"
#include "desktop/plain_text.h"
#include "display/resources.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QScreen>
#include <QVBoxLayout>

namespace quillon {
namespace {

void add_centred_text(QVBoxLayout& column, const QString& text) {
    QLabel* label = plain_label(text);
    label->setAlignment(Qt::AlignHCenter);
    column.addWidget(label);
}

void place_on_screen(QDialog& dialog) {
    const QRect area = dialog.screen()->geometry();
    const QSize size = dialog.sizeHint();
    dialog.move(area.left() + (area.width() - size.width()) / 4, area.top() + (area.height() - size.height()) / 8);
}

} // namespace

void show_about_dialog(const MessageCatalogue& catalogue, QWidget* parent) {
    constexpr int PICTURE_X = 44;
    constexpr int PICTURE_Y = 4;
    auto* dialog = new QDialog(parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(catalogue_text(catalogue, "DLG_ABOUT", 0, "About."));

    auto* picture = new QLabel;
    picture->setPixmap(QPixmap::fromImage(load_picture(ABOUT_IMAGE, true)));
    picture->setAccessibleName(catalogue_text(catalogue, "DLG_ABOUT", 2, "The pocket computer"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);

    auto* column = new QVBoxLayout(dialog);
    column->setContentsMargins(PICTURE_X, PICTURE_Y, PICTURE_X, 2 * PICTURE_Y);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->addWidget(picture, 0, Qt::AlignHCenter);
    add_centred_text(*column, QStringLiteral("Quillon Simulator."));
    add_centred_text(*column, catalogue_text(catalogue, "DLG_ABOUT", 1, "Version") +
                                  QStringLiteral(" " QUILLON_VERSION " (" QUILLON_BUILD_DATE ")"));
    add_centred_text(*column, QStringLiteral("The Quillon developers"));
    column->addWidget(buttons, 0, Qt::AlignHCenter);

    place_on_screen(*dialog);
    dialog->open();
}

} // namespace quillon

// SPDX-License-Identifier: MIT
// The window with the long explanation of the last error.
#pragma once

#include <functional>

class QWidget;

namespace quillon {

struct Machine;

/// Ways to the place of an error; both empty when it is at none.
struct ErrorPlaces {
    std::function<void()> show_in_listing;
    std::function<void()> open_editor;
};

/// Shows `error_detail` as it is now, until it is closed, with a button for each way to the error's place.
void show_error_detail(const Machine& m, const ErrorPlaces& places, QWidget* parent);

} // namespace quillon

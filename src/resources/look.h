// SPDX-License-Identifier: MIT
#pragma once

/// What all windows share in their looks.
namespace Look {

/// Gives the application object its font, palette and style sheet (":/qss/app.qss"). False, with
/// nothing applied, when the style sheet can't be opened.
bool apply();

} // namespace Look

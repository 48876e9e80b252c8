// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// Makes the style sheet see a changed dynamic property of `widget`, also where its rules concern
/// the widget's children.
void repolish(QWidget *widget);

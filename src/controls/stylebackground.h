// SPDX-License-Identifier: MIT
#pragma once

class QPainter;
class QWidget;

/// Paints what the style sheet says of `widget`'s background and border; plain widgets that paint
/// themselves get it in no other way.
void drawStyleBackground(QPainter *painter, const QWidget *widget);

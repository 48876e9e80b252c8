// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTextDocument>
#include <QWidget>

/// Sets a tool tip that is shown letter by letter: the name of a file may look like markup, which
/// tool tips otherwise take for it.
inline void setPlainToolTip(QWidget *widget, const QString &text)
{
    widget->setToolTip(Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text);
}

// SPDX-License-Identifier: MIT
#include "resources/look.h"

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QPalette>

namespace {

const QRgb textColour = 0xff333333;
const QRgb quietColour = 0xff6b6b6b;
const QRgb disabledColour = 0xffbbbbbb;
const QRgb accentColour = 0xff006cd6;
const QRgb windowColour = 0xfff5f6f8;
const int fontPixels = 13;

QFont applicationFont()
{
    QFont font;
    font.setFamilies({QStringLiteral("Microsoft YaHei"), QStringLiteral("Noto Sans CJK SC")});
    font.setPixelSize(fontPixels);
    return font;
}

QPalette applicationPalette()
{
    QPalette palette{QColor(Qt::white), QColor(windowColour)};
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::ButtonText, QPalette::Text, QPalette::ToolTipText}) {
        palette.setColor(role, QColor(textColour));
        palette.setColor(QPalette::Disabled, role, QColor(disabledColour));
    }
    palette.setColor(QPalette::Base, QColor(Qt::white));
    palette.setColor(QPalette::PlaceholderText, QColor(quietColour));
    palette.setColor(QPalette::Highlight, QColor(accentColour));
    palette.setColor(QPalette::HighlightedText, QColor(Qt::white));
    palette.setColor(QPalette::Link, QColor(accentColour));
    return palette;
}

} // namespace

bool Look::apply()
{
    QFile file(QStringLiteral(":/qss/app.qss"));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    // The style sheet has no rule for the font and colour of every widget: with one, a list of a
    // thousand rows takes more than twice as long to come up.
    QApplication::setFont(applicationFont());
    QApplication::setPalette(applicationPalette());
    const QByteArray bytes = file.readAll();
    qApp->setStyleSheet(QString::fromUtf8(bytes.constData()));
    return true;
}

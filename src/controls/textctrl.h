// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QFont>
#include <QWidget>

struct Lettering;

/// Lines of text drawn from the upper left corner, close together as a video's text filter sets
/// them. The widget's size clips nothing but what lies outside it.
class TextCtrl : public QWidget
{
    Q_OBJECT

public:
    explicit TextCtrl(QWidget *parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString &text);
    QColor color() const { return m_color; }
    void setColor(const QColor &color);
    QFont textFont() const { return m_font; }
    void setFont(const QFont &font);
    /// From 0 to 1.
    double opacity() const { return m_opacity; }
    void setOpacity(double opacity);

    /// Draws the text, with room around it for what reaches out of its lines, scaled to fill the
    /// widget.
    void setFilling(bool filling);

    /// Of the whole text at the font's size.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Lettering lettering() const;

    QColor m_color;
    QFont m_font;
    QString m_text;
    double m_opacity = 1.0;
    bool m_isFilling = false;
};

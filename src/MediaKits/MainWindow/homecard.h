// SPDX-License-Identifier: MIT
#pragma once

#include "controls/widgetbutton.h"
#include "MediaKits/AppInstance/LocalStore/mediafunction.h"

class QVBoxLayout;

/// What a card of the home page shows and where it leads to.
struct HomeCardEntry
{
    QString buttonName;
    QString heading;
    QString text;
    /// Path of the picture.
    QString icon;
    /// Of the card's drop shadow, "#AARRGGBB".
    QString shadowColor;
    MediaFunction function;
};

/// A card of the home page: a white sheet with a soft coloured shadow, which rises under the mouse.
class HomeCard : public WidgetButton
{
    Q_OBJECT
    Q_PROPERTY(QColor sfcolor MEMBER m_shadowColor)

public:
    explicit HomeCard(const HomeCardEntry &entry, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void addSheet(const HomeCardEntry &entry);
    void lift(WidgetButton::MouseState state);

    QColor m_shadowColor;
    QVBoxLayout *m_layout;
    QWidget *m_sheet = nullptr;
};

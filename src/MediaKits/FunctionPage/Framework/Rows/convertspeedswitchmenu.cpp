// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/convertspeedswitchmenu.h"

#include "platform/compositor.h"
#include "ui_convertspeedswitchmenu.h"

#include <QPainterPath>

namespace {
// Of the card, in the style sheet.
constexpr qreal cardRadius = 6.0;
} // namespace

ConvertSpeedSwitchMenu::ConvertSpeedSwitchMenu(QWidget *parent)
    : QWidget(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint),
      m_ui(std::make_unique<Ui::ConvertSpeedSwitchMenu>())
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_DeleteOnClose);
    m_ui->setupUi(this);
    QButtonGroup *const speeds = m_ui->btnGrpSpeed;
    speeds->setId(m_ui->rbtnNormal, NormalSpeed);
    speeds->setId(m_ui->rbtnFast, FastSpeed);
    connect(speeds, QOverload<QAbstractButton *, bool>::of(&QButtonGroup::buttonToggled), this,
            &ConvertSpeedSwitchMenu::onButtonToggled);
    connect(speeds, QOverload<QAbstractButton *>::of(&QButtonGroup::buttonClicked), this,
            &QWidget::close);
}

ConvertSpeedSwitchMenu::~ConvertSpeedSwitchMenu() = default;

void ConvertSpeedSwitchMenu::setSpeedType(SpeedType type)
{
    const QSignalBlocker blocker(m_ui->btnGrpSpeed);
    QAbstractButton *const button = m_ui->btnGrpSpeed->button(type);
    if (!button)
        return;
    button->setChecked(true);
    button->setFocus();
}

void ConvertSpeedSwitchMenu::onButtonToggled(QAbstractButton *button, bool checked)
{
    if (checked)
        emit speedTypeChanged(SpeedType(m_ui->btnGrpSpeed->id(button)));
}

void ConvertSpeedSwitchMenu::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (isCompositingActive())
        return;
    // Otherwise what is translucent, the card's corners, would be black.
    QPainterPath card;
    card.addRoundedRect(rect(), cardRadius, cardRadius);
    setMask(card.toFillPolygon().toPolygon());
}

// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

class QAbstractButton;

namespace Ui {
class ConvertSpeedSwitchMenu;
}

/// Popup in which the user picks a row's speed. Create it with `new`, move it and call show(): it
/// deletes itself when it closes, which a pick does too.
class ConvertSpeedSwitchMenu : public QWidget
{
    Q_OBJECT

public:
    enum SpeedType {
        NormalSpeed = 1,
        FastSpeed = 2,
    };
    Q_ENUM(SpeedType)

    explicit ConvertSpeedSwitchMenu(QWidget *parent = nullptr);
    ~ConvertSpeedSwitchMenu() override;

    /// Checks the button of the type, where it has one; emits nothing.
    void setSpeedType(SpeedType type);

signals:
    /// The user checked the button of another type.
    void speedTypeChanged(ConvertSpeedSwitchMenu::SpeedType type);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void onButtonToggled(QAbstractButton *button, bool checked);

    const std::unique_ptr<Ui::ConvertSpeedSwitchMenu> m_ui;
};

Q_DECLARE_METATYPE(ConvertSpeedSwitchMenu::SpeedType)

// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include <memory>

class CSVideoPlayer;

namespace Ui {
class VolumeDialog;
}

/// Popup with the loudness of a preview, from 0 to 200 percent. Create it with `new`: it deletes
/// itself when it closes.
class VolumeDialog : public QDialog
{
    Q_OBJECT

public:
    explicit VolumeDialog(QWidget *parent = nullptr);
    ~VolumeDialog() override;

    /// Before it is shown.
    void setValue(int value);

signals:
    void valueChanged(int value);

private slots:
    void on_sliderVolume_valueChanged(int value);

private:
    const std::unique_ptr<Ui::VolumeDialog> m_ui;
};

/// Opens the popup of a player's loudness just above a button.
void showVolumePopup(CSVideoPlayer &player, QWidget &button);

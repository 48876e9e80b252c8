// SPDX-License-Identifier: MIT
#include "MediaKits/Player/volumedialog.h"

#include "controls/popupplacement.h"
#include "controls/windowshadow.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "ui_volumedialog.h"

VolumeDialog::VolumeDialog(QWidget *parent)
    : QDialog(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint),
      m_ui(std::make_unique<Ui::VolumeDialog>())
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    new WindowShadow(this);
}

VolumeDialog::~VolumeDialog() = default;

void VolumeDialog::setValue(int value)
{
    m_ui->sliderVolume->setValue(value);
}

void VolumeDialog::on_sliderVolume_valueChanged(int value)
{
    m_ui->lblVolume->setText(QStringLiteral("%1%").arg(value));
    emit valueChanged(value);
}

void showVolumePopup(CSVideoPlayer &player, QWidget &button)
{
    auto *popup = new VolumeDialog(button.window());
    popup->setValue(player.volume());
    QObject::connect(popup, &VolumeDialog::valueChanged, &player, &CSVideoPlayer::setVolume);
    placeAbove(popup, &button, Qt::AlignHCenter, 0);
    popup->show();
}

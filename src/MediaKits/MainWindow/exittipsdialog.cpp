// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/exittipsdialog.h"

#include "controls/windowshadow.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "ui_exittipsdialog.h"

namespace {

constexpr int shadowWidth = 11;
constexpr QRgb shadowColour = 0x12000000;

} // namespace

ExitTipsDialog::ExitTipsDialog(QWidget *parent)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::ExitTipsDialog>())
{
    setUpForm(*m_ui);
    setTitle(tr("提示"));
    findChild<WindowShadow *>()->setup(shadowWidth, QPoint(), QColor::fromRgba(shadowColour));
    m_ui->btnToTray->setDefault(true);
    m_ui->btnToTray->setFocus();
}

ExitTipsDialog::~ExitTipsDialog() = default;

void ExitTipsDialog::on_btnEixt_clicked()
{
    choose(ExitMode::Leave);
}

void ExitTipsDialog::on_btnToTray_clicked()
{
    choose(ExitMode::ToTray);
}

void ExitTipsDialog::choose(ExitMode mode)
{
    AppIni &ini = AppIni::instance();
    ini.setValue(AppIni::Key::IsExitTips, !m_ui->chkNoMore->isChecked());
    ini.setValue(AppIni::Key::ExitMode, int(mode));
    m_mode = mode;
    accept();
}

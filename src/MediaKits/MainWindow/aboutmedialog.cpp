// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/aboutmedialog.h"

#include "controls/iconpixmap.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "ui_aboutmedialog.h"

#include <QDesktopServices>

namespace {

constexpr QSize logoSize(64, 64);

} // namespace

AboutMeDialog::AboutMeDialog(QWidget *parent, const ProductContact &contact)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::AboutMeDialog>()), m_webSite(contact.webSite)
{
    setUpForm(*m_ui);
    setTitle(tr("关于我们"));
    m_ui->lblLogo->setPixmap(iconPixmap(QStringLiteral(":/drawable/logo.png"), logoSize));
    m_ui->lblVersion->setText(shortVersion());
    m_ui->btnOfficalWeb->setVisible(m_webSite.isValid());
}

AboutMeDialog::~AboutMeDialog() = default;

void AboutMeDialog::on_btnOfficalWeb_clicked()
{
    QDesktopServices::openUrl(m_webSite);
}

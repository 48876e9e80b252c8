// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/customerservice.h"

#include "ui_customerservice.h"

#include <QDesktopServices>
#include <QMessageBox>
#include <QUrlQuery>

namespace {

QUrl chatUrl(const QString &number)
{
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("uin"), number);
    query.addQueryItem(QStringLiteral("Menu"), QStringLiteral("yes"));
    // A null text would leave the equals sign out.
    query.addQueryItem(QStringLiteral("Site"), QLatin1String(""));
    QUrl url;
    url.setScheme(QStringLiteral("tencent"));
    url.setPath(QStringLiteral("message/"));
    url.setQuery(query);
    return url;
}

} // namespace

CustomerService::CustomerService(QWidget *parent, const ProductContact &contact)
    : PopupWindow(parent), m_ui(std::make_unique<Ui::CustomerService>()), m_contact(contact)
{
    m_ui->setupUi(this);
    m_ui->wdtWechat->setVisible(contact.showPicture(*m_ui->lblWechatCode));
    m_ui->wbnQQ->setVisible(!contact.serviceNumber.isEmpty());
    m_ui->lblQQNumber->setText(contact.serviceNumber);
    m_ui->lblPhone->setVisible(!contact.phone.isEmpty());
    m_ui->lblPhone->setText(tr("客服电话：%1").arg(contact.phone));
}

CustomerService::~CustomerService() = default;

void CustomerService::on_wbnQQ_clicked()
{
    const QString number = m_contact.serviceNumber;
    if (QDesktopServices::openUrl(chatUrl(number)))
        return;
    // The popup goes as soon as another window opens.
    QMessageBox::warning(parentWidget(), tr("警告"),
                         tr("如果无法打开聊天窗口，请下载最新版QQ继续与%1会话").arg(number));
}

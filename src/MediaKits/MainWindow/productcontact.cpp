// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/productcontact.h"

#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"

#include <QDir>
#include <QImageReader>
#include <QLabel>

ProductContact::ProductContact(const AppConfig &config)
    : webSite(QUrl::fromUserInput(config.contactSite)),
      serviceNumber(config.contactNumber),
      phone(config.contactPhone),
      picture(config.contactPicture.isEmpty()
                  ? QString()
                  : QDir(appDir()).absoluteFilePath(config.contactPicture))
{
}

bool ProductContact::hasService() const
{
    return !serviceNumber.isEmpty() || !phone.isEmpty() || !picture.isEmpty();
}

bool ProductContact::showPicture(QLabel &label) const
{
    const QImage image = picture.isEmpty() ? QImage() : QImageReader(picture).read();
    if (image.isNull())
        return false;
    const double scale = label.devicePixelRatioF();
    QPixmap code = QPixmap::fromImage(
        image.scaled(label.maximumSize() * scale, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    code.setDevicePixelRatio(scale);
    label.setPixmap(code);
    return true;
}

const ProductContact &productContact()
{
    static const ProductContact contact{AppConfig::instance()};
    return contact;
}

// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/productcontact.h"

#include "controls/iconpixmap.h"
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
    label.setPixmap(
        fittedPixmap(QPixmap::fromImage(image), label.maximumSize(), label.devicePixelRatioF()));
    return true;
}

const ProductContact &productContact()
{
    static const ProductContact contact{AppConfig::instance()};
    return contact;
}

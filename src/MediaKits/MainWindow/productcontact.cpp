// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/productcontact.h"

const ProductContact &productContact()
{
    static const ProductContact contact = {QUrl(QStringLiteral("https://example.org/")), {}, {}};
    return contact;
}

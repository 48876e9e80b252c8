// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUrl>

/// Where the maker of the program is reached. What is empty isn't set up, and isn't offered.
struct ProductContact
{
    QUrl webSite;
    /// Number of the service account for chats.
    QString serviceNumber;
    QString phone;
};

/// The one of this build.
const ProductContact &productContact();

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUrl>

class QLabel;
struct AppConfig;

/// Where the maker of the program is reached. What is empty isn't set up, and isn't offered.
struct ProductContact
{
    ProductContact() = default;
    explicit ProductContact(const AppConfig &config);

    QUrl webSite;
    /// Number of the service account for chats.
    QString serviceNumber;
    QString phone;
    /// Path of the picture of a contact code.
    QString picture;

    /// Whether there is a way to the customer service.
    bool hasService() const;
    /// Shows the contact code, as large as the label is.
    /// @return false when there is none that can be read
    bool showPicture(QLabel &label) const;
};

/// As main.ini has it.
const ProductContact &productContact();

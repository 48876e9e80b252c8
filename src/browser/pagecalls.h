// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

// What the login page may ask the program for, apart from the login itself.

/// What the page is told of this computer, as JSON text.
QString deviceText();

/// Opens an address of the web in the user's browser; any other is left alone.
QVariant openNewWindow(const QVariantList &arguments);

/// Takes an event's name and its parameters as JSON text.
QVariant setMarkPoint(const QVariantList &arguments);

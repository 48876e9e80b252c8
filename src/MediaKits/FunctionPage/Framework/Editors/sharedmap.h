// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QSharedPointer>
#include <QVariantMap>

/// What several editors keep in variants; here since a type may be declared once only.
Q_DECLARE_METATYPE(QSharedPointer<QVariantMap>)

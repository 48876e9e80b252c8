// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QSharedPointer>
#include <QVariantMap>

/// What is marked in an editor and told by names, shared by all that show it.
using SharedMap = QSharedPointer<QVariantMap>;

Q_DECLARE_METATYPE(QSharedPointer<QVariantMap>)

// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/qtsingleapplication.h"

/// The application object.
class MyApplication : public QtSingleApplication
{
    Q_OBJECT

public:
    using QtSingleApplication::QtSingleApplication;

    bool notify(QObject *receiver, QEvent *event) override;
};

// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// The check for a new version that the user asked for; answers in a dialog on `parent`.
void checkForUpdate(QWidget *parent);

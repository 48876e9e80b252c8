// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// Runs the login dialog on `parent` and returns when it has closed; at once when it is open
/// already.
void runLogin(QWidget *parent);

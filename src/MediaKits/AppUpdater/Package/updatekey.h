// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// The Ed25519 public key, 32 bytes, that packages of updates are signed for; empty in a build that
/// takes no updates. Alone in its file, so that a program may be linked with another key.
QByteArray updateKey();

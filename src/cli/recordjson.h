// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/encparam.h"

#include <QJsonObject>

// The fields of the stream records, of presets and of probed files alike.

QJsonObject videoFields(const VEncParam &video);
QJsonObject audioFields(const AEncParam &audio);

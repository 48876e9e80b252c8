// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QSharedPointer>

/// Base of what a task is told. Each subclass has its own number, which a task checks before it
/// takes a parameter over.
class MediaTaskParam
{
public:
    explicit MediaTaskParam(int paramType) : type(paramType) {}
    virtual ~MediaTaskParam() = default;

    int type;

protected:
    MediaTaskParam(const MediaTaskParam &) = default;
    MediaTaskParam &operator=(const MediaTaskParam &) = default;
};

Q_DECLARE_METATYPE(QSharedPointer<MediaTaskParam>)

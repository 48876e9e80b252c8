// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVector>

class QWidget;

/// One page of the shell with its button in the side bar. The place in functionPages() is the
/// function's number, which the stack, the button group and the usage events share.
struct FunctionPageEntry
{
    QString buttonName;
    QString label;
    /// Path without suffix of the button's picture; the one of the checked button ends in "_on".
    QString icon;
    /// Makes the page, owned by `parent`; cheap, since all pages are made at the start.
    QWidget *(*create)(QWidget *parent);
};

const QVector<FunctionPageEntry> &functionPages();

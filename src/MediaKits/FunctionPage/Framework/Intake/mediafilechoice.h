// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QWidget;

/// The existing files that the user picks in a file dialog; empty when cancelled.
/// @param filter name filters, as fileDialogFilter() makes them
QStringList chooseMediaFiles(QWidget *parent, const QString &filter);

/// The folder that the user picks in a file dialog; empty when cancelled.
QString chooseMediaFolder(QWidget *parent);

/// Absolute paths of the readable files in `folder` itself whose names match `patterns`
/// ("*.mp4") in any case, by name; behind them those that can't be opened because of their names
/// (`isUndecodable`), of which the user has to be told.
QStringList mediaFilesIn(const QString &folder, const QStringList &patterns);

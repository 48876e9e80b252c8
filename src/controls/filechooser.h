// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

class QWidget;

/// The one front of the file dialogs.
namespace FileChooser {

struct Request
{
    QString title;
    QString filter;    ///< as for QFileDialog, "Pictures (*.png *.jpg);;All files (*)"
    QString directory; ///< shown first; empty for the one of the last choice
};

/// Existing files that the user picked; empty when cancelled.
QStringList chooseFiles(QWidget *parent, const Request &request);

/// One existing file; empty when cancelled.
QString chooseFile(QWidget *parent, const Request &request);

/// An existing directory; empty when cancelled. The filter is not used.
QString chooseDirectory(QWidget *parent, const Request &request);

/// The next choice is answered with these paths (empty: cancelled) and no dialog opens. For tests.
void setNextAnswer(const QStringList &paths);

} // namespace FileChooser

// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/VideoWatermark/markplacing.h"

#include <QMenu>

/// The templates of marks: to choose one, to save the present marks as one, to remove one.
class TemplateMenu : public QMenu
{
    Q_OBJECT

public:
    /// @param canSave whether there is anything to save
    explicit TemplateMenu(bool canSave, QWidget *parent = nullptr);

signals:
    void chosen(const QString &name);
    /// The present marks are to be saved as one.
    void savingWanted();
    void removalWanted(const QString &name);
};

/// Asks for the name of a new template, and whether it may replace one of that name.
/// @return empty when the user cancelled, or the parent has gone
QString askTemplateName(QWidget *parent);
/// Removes a template if the user is sure.
void askAndRemoveTemplate(const QString &name, QWidget *parent);

/// Tells the user where templates that couldn't be understood have been kept; once.
void tellOfBrokenTemplates(QWidget *parent);

/// Tells the user when it can't.
/// @param marks plain maps
void saveTemplate(const QString &name, const QVariantList &marks, const MarkedPicture &picture,
                  QWidget *parent);
/// Plain maps, placed on another picture; empty for a name that isn't one.
QVariantList templateFor(const QString &name, const MarkedPicture &picture);

// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/rowcontent.h"

#include <QWidget>

class QLabel;

/// Shows the facts of one file in a grid of two by two labels.
class MediaFactsWidget : public QWidget
{
    Q_OBJECT

public:
    explicit MediaFactsWidget(QWidget *parent);
    /// Names the labels, as "lblInFormat", "lblInRes", "lblInDuration", "lblInSize".
    /// @param side "In" or "Out"
    /// @param detailName what the second label shows, as "Res"
    void setNames(QLatin1String side, QLatin1String detailName);

    /// Puts a name in front of the size, instead of the length: "lblOutSizeName", whose later text
    /// is its dynamic property "FinishName". Once, after `setNames`; nothing for an empty name.
    void setSizeName(const QString &name, const QString &finishName);
    void showFinishedSizeName();

    /// Shows number and kind of several files, "lblOutCount" and "lblOutStyle", in the place of the
    /// second fact and the length. Once, after `setNames`.
    void setCounting();

    /// Puts the labels side by side.
    void setInLine();

    void showFacts(const MediaFacts &facts);

private:
    QLabel *addLabel(int row, int column, const QString &toolTip);

    QLabel *m_format;
    QLabel *m_detail;
    QLabel *m_duration;
    QLabel *m_size;
    QLabel *m_sizeName = nullptr;
};

// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/VideoWatermark/mark.h"

#include <QObject>
#include <QRectF>

class FragmentPane;
class QListWidget;
class QListWidgetItem;
class TextMaskAdapterItem;
class WatermarkFragmentItemWidget;
class WatermarkMaskAdapter;
class WatermarkMaskAdapterItem;

/// The marks of an editor: each is a row of the list and a box of the mask, and what is done to one
/// shows in the other. A mark whose picture has gone has no box.
class MarkSet : public QObject
{
    Q_OBJECT

public:
    /// The parts outlive the set's use.
    MarkSet(FragmentPane *pane, WatermarkMaskAdapter *mask, QObject *parent);

    /// Appends a mark, which becomes the current one.
    /// @return whether it is one; the user has been told when its picture can't be read
    bool add(const Mark &mark);
    /// Replaces all marks; those of unknown kinds are passed over.
    void setMarks(const QVariantList &marks);
    /// `Mark`s in the order of the list.
    QVariantList marks() const;

    /// Null when there is none.
    Mark current() const;
    /// Of the current mark's box; 0 without one.
    int currentType() const;
    void removeCurrent();
    /// Sets keys of the current mark, and shows what they mean.
    void apply(const QVariantMap &part);
    /// By that many picture pixels, inside the picture.
    void moveCurrent(const QPoint &by);
    /// By that many picture pixels to the right or the bottom, inside the picture. A picture that
    /// keeps its shape does so; a text has its size by its font.
    void resizeCurrent(const QPoint &by);
    void alignCurrent(int place);

    /// Shows the boxes of those marks that are seen then.
    void showAt(int ms);
    void setRowsEnabled(bool enabled);

signals:
    /// Another mark is the current one, or none is.
    void currentChanged();
    /// The user has made another mark the current one.
    void chosen();
    /// A mark was added, changed or removed.
    /// @param step what goes with the step before it when that has the same name; empty for none
    void edited(const QString &step);
    void textEditWanted();

private:
    void append(const Mark &mark, WatermarkMaskAdapterItem *box);
    WatermarkMaskAdapterItem *makeBox(const QVariantMap &map);
    QRectF newRect(const WatermarkMaskAdapterItem *box) const;
    void showInBox(WatermarkMaskAdapterItem *box, const QVariantMap &map, const QVariantMap &part);
    void showText(TextMaskAdapterItem *box, const QVariantMap &map);
    void onRowsRemoved(int first, int last);
    void onRectChanged(const WatermarkMaskAdapterItem *box, const QRectF &rect);
    void onCurrentChanged();
    void select(const WatermarkMaskAdapterItem *box);
    QListWidgetItem *rowOf(const WatermarkMaskAdapterItem *box) const;
    WatermarkMaskAdapterItem *currentBox() const;
    WatermarkFragmentItemWidget *widgetOf(QListWidgetItem *item) const;

    QListWidget *const m_list;
    FragmentPane *const m_pane;
    WatermarkMaskAdapter *const m_mask;
    bool m_isLoading = false;
};

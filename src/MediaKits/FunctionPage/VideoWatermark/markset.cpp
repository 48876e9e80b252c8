// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/markset.h"

#include "controls/imagectrl.h"
#include "controls/textctrl.h"
#include "MediaKits/FunctionPage/Framework/Editors/Fragments/fragmentpane.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/drmwidget.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskadapter.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskadapteritem.h"
#include "MediaKits/FunctionPage/VideoWatermark/watermarkfragmentitemwidget.h"

#include <QFont>
#include <QScopedValueRollback>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

namespace {

constexpr QSize smallPicture(160, 120);
constexpr double leastSide = 2.0; // picture pixels

WatermarkMaskAdapterItem *boxOf(const QListWidgetItem *item)
{
    return item ? item->data(MaskItemRole).value<WatermarkMaskAdapterItem *>() : nullptr;
}

Mark markOf(const QListWidgetItem *item)
{
    return item ? item->data(MarkRole).value<Mark>() : Mark();
}

bool isKnown(const QVariantMap &map)
{
    const QString filter = map.value(MarkKey::filter).toString();
    return filter == MarkFilter::text || filter == MarkFilter::image ||
           filter == MarkFilter::delogo;
}

} // namespace

MarkSet::MarkSet(FragmentPane *pane, WatermarkMaskAdapter *mask, QObject *parent)
    : QObject(parent), m_list(pane->list()), m_pane(pane), m_mask(mask)
{
    qRegisterMetaType<Mark>("QSharedPointer<QVariantMap>");
    connect(m_list, &QListWidget::currentItemChanged, this, &MarkSet::onCurrentChanged);
    const QAbstractItemModel *rows = m_list->model();
    connect(rows, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            [this](const QModelIndex &, int first, int last) { onRowsRemoved(first, last); });
    // Until its end the removal isn't to be seen in the list.
    connect(rows, &QAbstractItemModel::rowsRemoved, this, [this] {
        if (!m_isLoading)
            emit edited({});
    });
    connect(mask, &WatermarkMaskAdapter::itemRectChanged, this, &MarkSet::onRectChanged);
    connect(mask, &WatermarkMaskAdapter::itemSelectItemChanged, this, &MarkSet::select);
    connect(mask, &WatermarkMaskAdapter::itemReleased, this, [this] { emit edited({}); });
}

bool MarkSet::add(const Mark &mark)
{
    if (!isKnown(*mark))
        return false;
    WatermarkMaskAdapterItem *box = makeBox(*mark);
    if (!box)
        return false;
    append(mark, box);
    emit edited({});
    return true;
}

void MarkSet::setMarks(const QVariantList &marks)
{
    const QScopedValueRollback<bool> loading(m_isLoading, true);
    m_pane->clear();
    for (const QVariant &entry : marks) {
        const auto mark = entry.value<Mark>();
        if (!mark || !isKnown(*mark))
            continue;
        // Without a message for one that has gone.
        const QString picture = mark->value(MarkKey::imagefile).toString();
        append(mark, picture.isEmpty()
                         ? makeBox(*mark)
                         : m_mask->addImageItem(WatermarkMaskAdapter::uprightPicture(picture)));
    }
}

void MarkSet::append(const Mark &mark, WatermarkMaskAdapterItem *box)
{
    QListWidgetItem *item = nullptr;
    {
        // The box is known to the row before anything asks for it.
        const QSignalBlocker blocker(m_list);
        item = m_pane->append<WatermarkFragmentItemWidget>(mark);
        item->setData(MaskItemRole, QVariant::fromValue(box));
    }
    connect(widgetOf(item), &WatermarkFragmentItemWidget::editActive, this, [this, item] {
        m_list->setCurrentItem(item);
        emit textEditWanted();
    });
    if (box) {
        const QRectF rect = mark->value(MarkKey::rect).toRectF();
        showInBox(box, *mark, *mark);
        m_mask->setItemRect(box, rect.isNull() ? newRect(box) : rect);
        mark->insert(MarkKey::rect, m_mask->itemRect(box));
    }
    onCurrentChanged();
}

// In a small picture the usual boxes, and texts too, shrink to what there is room for. In any other
// a text keeps its size, and may be longer than a line.
QRectF MarkSet::newRect(const WatermarkMaskAdapterItem *box) const
{
    const QRectF rect = m_mask->itemRect(box);
    const QSizeF room = m_mask->videoSize();
    const bool isSmall =
        room.width() < smallPicture.width() || room.height() < smallPicture.height();
    const bool fits = rect.width() <= room.width() && rect.height() <= room.height();
    if (room.isEmpty() || fits || (!isSmall && box->type() == WatermarkMaskAdapterItem::Text))
        return rect;
    return {rect.topLeft(), rect.size().scaled(room, Qt::KeepAspectRatio)};
}

WatermarkMaskAdapterItem *MarkSet::makeBox(const QVariantMap &map)
{
    const QString filter = map.value(MarkKey::filter).toString();
    if (filter == MarkFilter::text)
        return m_mask->addTextItem();
    if (filter == MarkFilter::image)
        return m_mask->addImageItem(map.value(MarkKey::imagefile).toString());
    return m_mask->addDelogoItem();
}

QVariantList MarkSet::marks() const
{
    QVariantList marks;
    for (int i = 0; i < m_list->count(); ++i)
        marks += QVariant::fromValue(markOf(m_list->item(i)));
    return marks;
}

Mark MarkSet::current() const
{
    return markOf(m_list->currentItem());
}

WatermarkMaskAdapterItem *MarkSet::currentBox() const
{
    return boxOf(m_list->currentItem());
}

int MarkSet::currentType() const
{
    const WatermarkMaskAdapterItem *box = currentBox();
    return box ? box->type() : 0;
}

WatermarkFragmentItemWidget *MarkSet::widgetOf(QListWidgetItem *item) const
{
    return qobject_cast<WatermarkFragmentItemWidget *>(m_list->itemWidget(item));
}

void MarkSet::removeCurrent()
{
    delete m_list->currentItem();
}

void MarkSet::apply(const QVariantMap &part)
{
    const Mark mark = current();
    if (!mark)
        return;
    QVariantMap changed;
    for (auto key = part.begin(); key != part.end(); ++key) {
        if (mark->value(key.key()) != key.value())
            changed.insert(key.key(), key.value());
    }
    if (changed.isEmpty())
        return;
    for (auto key = changed.begin(); key != changed.end(); ++key)
        mark->insert(key.key(), key.value());
    if (WatermarkMaskAdapterItem *box = currentBox())
        showInBox(box, *mark, changed);
    widgetOf(m_list->currentItem())->refresh();
    const QString name =
        QStringList(changed.keys()).join(u' ') + QString::number(m_list->currentRow());
    // A dialog's outcome is a step of its own.
    emit edited(part.contains(MarkKey::font) ? QString() : name);
}

void MarkSet::showInBox(WatermarkMaskAdapterItem *box, const QVariantMap &map,
                        const QVariantMap &part)
{
    const double opacity = map.value(MarkKey::opacity, 1.0).toDouble();
    if (box->type() == WatermarkMaskAdapterItem::Image) {
        const double aspect = std::abs(box->widget()->aspect());
        const bool keeps = map.value(MarkKey::aspectKeep, true).toBool();
        box->widget()->setAspect(keeps ? aspect : -aspect);
        static_cast<ImageMaskAdapterItem *>(box)->image()->setOpacity(opacity);
    } else if (box->type() == WatermarkMaskAdapterItem::Text) {
        auto *text = static_cast<TextMaskAdapterItem *>(box);
        text->text()->setOpacity(opacity);
        if (part.contains(MarkKey::text) || part.contains(MarkKey::font) ||
            part.contains(MarkKey::fontcolor))
            showText(text, map);
    }
}

// The box takes the text's size and stays where it is.
void MarkSet::showText(TextMaskAdapterItem *box, const QVariantMap &map)
{
    box->text()->setText(map.value(MarkKey::text).toString());
    box->text()->setFont(map.value(MarkKey::font).value<QFont>());
    box->text()->setColor(map.value(MarkKey::fontcolor).value<QColor>());
    const QRectF rect = map.value(MarkKey::rect).toRectF();
    m_mask->setItemRect(box, QRectF(rect.topLeft(), m_mask->textSize(*box)));
}

void MarkSet::moveCurrent(const QPoint &by)
{
    const WatermarkMaskAdapterItem *box = currentBox();
    if (!box)
        return;
    const QRectF rect = m_mask->itemRect(box);
    const QSizeF room = QSizeF(m_mask->videoSize()) - rect.size();
    const auto within = [](double place, double most) {
        return std::clamp(place, std::min(0.0, most), std::max(0.0, most));
    };
    m_mask->moveItem(currentBox(), {within(std::round(rect.x()) + by.x(), room.width()),
                                    within(std::round(rect.y()) + by.y(), room.height())});
    emit edited(QStringLiteral("move%1").arg(m_list->currentRow()));
}

void MarkSet::resizeCurrent(const QPoint &by)
{
    WatermarkMaskAdapterItem *box = currentBox();
    if (!box || box->type() == WatermarkMaskAdapterItem::Text)
        return;
    const QRectF rect = m_mask->itemRect(box);
    const QSizeF room = QSizeF(m_mask->videoSize()) - QSizeF(rect.x(), rect.y());
    const auto within = [](double side, double own, double most) {
        return std::clamp(side, leastSide, std::max({own, most, leastSide}));
    };
    QSizeF size(within(rect.width() + by.x(), rect.width(), room.width()),
                within(rect.height() + by.y(), rect.height(), room.height()));
    const bool keeps = box->type() == WatermarkMaskAdapterItem::Image &&
                       current()->value(MarkKey::aspectKeep, true).toBool();
    if (keeps) {
        const double wanted =
            by.x() != 0 ? size.width() / rect.width() : size.height() / rect.height();
        const double most =
            std::max(1.0, std::min(room.width() / rect.width(), room.height() / rect.height()));
        size = rect.size() * std::min(wanted, most);
    }
    m_mask->setItemRect(box, {rect.topLeft(), size});
    emit edited(QStringLiteral("resize%1").arg(m_list->currentRow()));
}

void MarkSet::alignCurrent(int place)
{
    if (!currentBox())
        return;
    m_mask->alignItem(currentBox(), place);
    emit edited({});
}

void MarkSet::showAt(int ms)
{
    for (int i = 0; i < m_list->count(); ++i) {
        const QListWidgetItem *item = m_list->item(i);
        const Mark mark = markOf(item);
        if (!mark || !boxOf(item))
            continue;
        m_mask->setItemVisible(boxOf(item), isSeenAt(*mark, ms));
    }
}

void MarkSet::setRowsEnabled(bool enabled)
{
    for (int i = 0; i < m_list->count(); ++i)
        widgetOf(m_list->item(i))->setEnabled(enabled);
}

void MarkSet::onRowsRemoved(int first, int last)
{
    for (int i = first; i <= last; ++i) {
        WatermarkMaskAdapterItem *box = boxOf(m_list->item(i));
        m_list->item(i)->setData(MaskItemRole, {});
        m_mask->removeItem(box);
    }
}

void MarkSet::onRectChanged(const WatermarkMaskAdapterItem *box, const QRectF &rect)
{
    if (const Mark mark = markOf(rowOf(box)))
        mark->insert(MarkKey::rect, rect);
}

void MarkSet::onCurrentChanged()
{
    m_mask->selectItem(currentBox());
    emit currentChanged();
    if (!m_isLoading)
        emit chosen();
}

void MarkSet::select(const WatermarkMaskAdapterItem *box)
{
    if (QListWidgetItem *item = rowOf(box))
        m_list->setCurrentItem(item);
}

QListWidgetItem *MarkSet::rowOf(const WatermarkMaskAdapterItem *box) const
{
    for (int i = 0; box && i < m_list->count(); ++i) {
        if (boxOf(m_list->item(i)) == box)
            return m_list->item(i);
    }
    return nullptr;
}

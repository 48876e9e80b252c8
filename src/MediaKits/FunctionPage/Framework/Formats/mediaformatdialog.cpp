// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatdialog.h"

#include "catalogue/encparamcatalog.h"
#include "controls/windowshadow.h"
#include "MediaKits/AppInstance/LocalStore/encparamhistory.h"
#include "MediaKits/FunctionPage/Framework/Formats/categoryitemwidget.h"
#include "MediaKits/FunctionPage/Framework/Formats/encparaminfoitemwidget.h"
#include "MediaKits/FunctionPage/Framework/Formats/formatitemroles.h"
#include "MediaKits/FunctionPage/Framework/Formats/historyitemwidget.h"
#include "ui_mediaformatdialog.h"

#include <QKeyEvent>
#include <QTimer>

namespace {

constexpr int videoTab = 1;
constexpr int audioTab = 2;
constexpr int recentTab = 3;

constexpr int audioMask = 1;
constexpr int videoMask = 2;

constexpr quint32 videoKind = 1;
constexpr quint32 audioKind = 2;

constexpr int presetsPage = 0;
constexpr int recentPage = 1;

const EncParamCatalog &catalogue()
{
    return EncParamCatalog::instance();
}

template<typename RowWidget>
void appendRow(QListWidget *list, std::unique_ptr<QListWidgetItem> item)
{
    auto *row = new RowWidget(*item, list);
    item->setSizeHint(row->size());
    QListWidgetItem *const added = item.release();
    list->addItem(added);
    list->setItemWidget(added, row);
}

// The name is for screen readers: the row's widget shows it.
std::unique_ptr<QListWidgetItem> makeItem(quint32 id, const QString &name, const QVariant &record)
{
    auto item = std::make_unique<QListWidgetItem>();
    item->setData(Qt::AccessibleTextRole, name);
    item->setData(FormatIdRole, id);
    item->setData(FormatRecordRole, record);
    return item;
}

} // namespace

MediaFormatDialog::MediaFormatDialog(quint32 id, bool hideKeepSource, QWidget *parent)
    : QDialog(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint),
      m_ui(std::make_unique<Ui::MediaFormatDialog>()),
      m_hideKeepSource(hideKeepSource)
{
    setAttribute(Qt::WA_DeleteOnClose);
    m_ui->setupUi(this);
    m_ui->lblNoHistory->hide();
    new WindowShadow(this);
    QButtonGroup *const tabs = m_ui->btnGrpType;
    tabs->setId(m_ui->btnHistory, recentTab);
    tabs->setId(m_ui->btnVideo, videoTab);
    tabs->setId(m_ui->btnAudio, audioTab);
    connect(tabs, QOverload<QAbstractButton *, bool>::of(&QButtonGroup::buttonToggled), this,
            &MediaFormatDialog::onTabToggled);
    showPreset(id);
    m_ui->lwdtParamInfos->setFocus();
    QTimer::singleShot(0, this, &MediaFormatDialog::fillHistory);
}

MediaFormatDialog::~MediaFormatDialog() = default;

void MediaFormatDialog::setFormatTypes(int mask, bool show)
{
    m_allowed = mask;
    m_ui->btnVideo->setVisible(!show);
    m_ui->btnAudio->setVisible(!show);
    if (mask & audioMask) {
        m_ui->btnAudio->setVisible(show);
        m_ui->btnAudio->setChecked(true);
    }
    if (mask & videoMask) {
        m_ui->btnVideo->setVisible(show);
        m_ui->btnVideo->setChecked(true);
    }
}

void MediaFormatDialog::setOpenSize(const QSize &size)
{
    m_openSize = size;
    fillPresets(catalogue().categoryOf(m_currentId), m_currentId);
}

void MediaFormatDialog::showPreset(quint32 id)
{
    m_currentId = catalogue().hasEncParam(id) ? id : EncParamCatalog::defaultKeepSourceId;
    const quint32 category = catalogue().categoryOf(m_currentId);
    fillCategories(category);
    fillPresets(category, m_currentId);
    // Device presets are of kind 3, which is the recent tab's number; and no tab lists GIF.
    const quint32 kind = EncParamCatalog::categoryKind(category);
    if (!catalogue().category(category) || (kind != videoKind && kind != audioKind))
        return;
    // The signals come from the group even while the button's own are blocked.
    const QSignalBlocker blocker(m_ui->btnGrpType);
    m_ui->btnGrpType->button(int(kind))->setChecked(true);
}

void MediaFormatDialog::fillCategories(quint32 category)
{
    const auto shown = catalogue().category(category);
    if (!shown)
        return;
    QListWidget *const list = m_ui->lWdtCategory;
    const QSignalBlocker blocker(list);
    list->clear();
    for (const quint32 id : catalogue().categoryIds()) {
        const auto record = catalogue().category(id);
        if (record->type != shown->type)
            continue;
        appendRow<CategoryItemWidget>(list,
                                      makeItem(id, record->title, QVariant::fromValue(record)));
        if (id == category)
            list->setCurrentRow(list->count() - 1);
    }
}

void MediaFormatDialog::fillPresets(quint32 category, quint32 current)
{
    QListWidget *const list = m_ui->lwdtParamInfos;
    const QSignalBlocker blocker(list);
    list->clear();
    for (const quint32 id : catalogue().encParamIds()) {
        const auto preset = catalogue().encParam(id);
        if (preset->displayCategoryID != category ||
            (m_hideKeepSource && catalogue().isKeepSource(id)))
            continue;
        auto item = makeItem(id, preset->name, QVariant::fromValue(preset));
        item->setData(OpenSizeRole, m_openSize);
        appendRow<EncParamInfoItemWidget>(list, std::move(item));
        if (id == current)
            list->setCurrentRow(list->count() - 1);
    }
}

bool MediaFormatDialog::isAllowed(quint32 id) const
{
    const quint32 kind = catalogue().kindOf(id);
    return catalogue().hasEncParam(id) && !(m_hideKeepSource && catalogue().isKeepSource(id)) &&
           (kind != audioKind || (m_allowed & audioMask)) &&
           (kind != videoKind || (m_allowed & videoMask));
}

void MediaFormatDialog::fillHistory()
{
    for (const quint32 id : EncParamHistory::instance().ids()) {
        if (isAllowed(id))
            addHistoryItem(id);
    }
    m_ui->lblNoHistory->setVisible(m_ui->lwdtHistory->count() == 0);
}

void MediaFormatDialog::addHistoryItem(quint32 id)
{
    QListWidget *const list = m_ui->lwdtHistory;
    const auto category = catalogue().category(catalogue().categoryOf(id));
    const auto preset = catalogue().encParam(id);
    auto item = makeItem(id, catalogue().labelOf(*preset), QVariant::fromValue(category));
    item->setData(RecentPresetRole, QVariant::fromValue(preset));
    QListWidgetItem *const added = item.get();
    appendRow<HistoryItemWidget>(list, std::move(item));
    connect(qobject_cast<HistoryItemWidget *>(list->itemWidget(added)),
            &HistoryItemWidget::operationActivate, this,
            [this, added](HistoryItemWidget::Operation operation) {
                if (operation == HistoryItemWidget::DeleteOperation)
                    removeHistoryItem(added);
            });
}

void MediaFormatDialog::removeHistoryItem(QListWidgetItem *item)
{
    EncParamHistory::instance().remove(item->data(FormatIdRole).toUInt());
    delete item;
    m_ui->lblNoHistory->setVisible(m_ui->lwdtHistory->count() == 0);
}

void MediaFormatDialog::onTabToggled(QAbstractButton *button, bool checked)
{
    if (!checked)
        return;
    const int tab = m_ui->btnGrpType->id(button);
    if (tab == recentTab) {
        m_ui->swdtFormats->setCurrentIndex(recentPage);
        return;
    }
    m_ui->swdtFormats->setCurrentIndex(presetsPage);
    const quint32 kind = quint32(tab);
    const quint32 own = catalogue().categoryOf(m_currentId);
    const bool isOwnTab = kind == catalogue().kindOf(m_currentId) && catalogue().category(own);
    const quint32 category = isOwnTab ? own : catalogue().firstCategoryOfKind(kind);
    fillCategories(category);
    fillPresets(category, m_currentId);
}

void MediaFormatDialog::on_lWdtCategory_currentRowChanged(int currentRow)
{
    if (const QListWidgetItem *item = m_ui->lWdtCategory->item(currentRow))
        fillPresets(item->data(FormatIdRole).toUInt(), m_currentId);
}

void MediaFormatDialog::on_lwdtParamInfos_itemClicked(QListWidgetItem *item)
{
    pick(item);
}

void MediaFormatDialog::on_lwdtHistory_itemClicked(QListWidgetItem *item)
{
    pick(item);
}

void MediaFormatDialog::pick(const QListWidgetItem *item)
{
    m_currentId = item->data(FormatIdRole).toUInt();
    emit encParamInfoIDPicked(m_currentId);
    EncParamHistory::instance().touch(m_currentId);
    accept();
}

void MediaFormatDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QDialog::keyPressEvent(event);
        return;
    }
    const auto *list = qobject_cast<QListWidget *>(focusWidget());
    if (list == m_ui->lWdtCategory)
        m_ui->lwdtParamInfos->setFocus();
    else if (list && list->currentItem())
        pick(list->currentItem());
    else if (auto *button = qobject_cast<QAbstractButton *>(focusWidget()))
        button->click();
}

void MediaFormatDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    // Only now do the lists have their height.
    for (QListWidget *list : {m_ui->lWdtCategory, m_ui->lwdtParamInfos})
        list->scrollToItem(list->currentItem(), QAbstractItemView::PositionAtCenter);
}

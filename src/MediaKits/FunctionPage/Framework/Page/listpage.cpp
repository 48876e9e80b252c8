// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Page/listpage.h"

#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/AppInstance/LocalStore/mediafunction.h"
#include "MediaKits/DataTracker/trackevent.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "platform/undecodablenames.h"
#include "ui_listpage.h"

#include <QFileInfo>
#include <QPointer>
#include <QVBoxLayout>

#include <algorithm>

namespace {

enum StackPage { EmptyPage, RowsPage };

const QString batchName = QStringLiteral("a");

QString addTypeText(FileAddType type)
{
    switch (type) {
    case FileAddType::Dragged:
        return QStringLiteral("拖拽文件");
    case FileAddType::AddFile:
        return QStringLiteral("添加文件");
    case FileAddType::AddFolder:
        return QStringLiteral("添加文件夹");
    }
    return {};
}

QString undecodableText(const QStringList &files)
{
    constexpr int mostNames = 5;
    QStringList names;
    for (const QString &file : files.mid(0, mostNames))
        names += QFileInfo(file).fileName();
    if (files.size() > mostNames)
        names += QStringLiteral("…");
    return ListPage::tr("有 %1 个文件的名称不是 UTF-8 编码，无法打开，请先重命名：\n%2")
        .arg(QString::number(files.size()), names.join(QLatin1Char('\n')));
}

} // namespace

ListPage::ListPage(const Kind &kind, QWidget *parent) : LazyPage(parent), m_kind(kind) {}

ListPage::~ListPage() = default;

void ListPage::build()
{
    m_ui = std::make_unique<Ui::ListPage>();
    m_ui->setupUi(this);
    m_rows = m_kind.createRows(m_ui->fileDragDropWidget);
    // Each list tells its state under a name of its own.
    const QByteArray stateName = m_rows->metaObject()->className() + QByteArray("::TaskGrpState");
    qRegisterMetaType<RowsView::TaskGrpState>(stateName.constData());
    auto *layout = new QVBoxLayout(m_ui->fileDragDropWidget);
    layout->setContentsMargins(16, 0, 8, 0);
    layout->addWidget(m_rows);
    setUpIntake();
    connect(m_rows, &RowsView::taskGrpStateChanged, this,
            [this](const QString &, RowsView::TaskGrpState state) { showGroupState(state); });
    connect(m_rows, &RowsView::mediaListEmptyChanged, this, [this](bool empty) {
        m_ui->skdWdtList->setCurrentIndex(empty ? EmptyPage : RowsPage);
    });
    connect(m_ui->wdtFolder, &OutputFolderEdit::folderChanged, m_rows, &RowsView::setOutPath);
    m_ui->wdtFolder->setFunction(m_kind.function);
    setUpChoices(m_ui->wdtChoices);
}

void ListPage::setUpIntake()
{
    const QString filter = dialogFilter();
    const QStringList &suffixes = m_kind.dropSuffixes();
    m_ui->fileAddGPage->setFilter(filter);
    m_ui->fileAddGPage->setAllowedSuffixes(suffixes);
    m_ui->fileDragDropWidget->setAllowedSuffixes(suffixes);
    m_ui->comToolBarGPage->setFilter(filter);
    m_ui->comToolBarGPage->setAllowedPatterns(suffixPatterns(m_kind.formatClasses));
    connect(m_ui->fileAddGPage, &FileAddGPage::filesAddActived, this, &ListPage::receiveFiles);
    connect(m_ui->fileDragDropWidget, &FileDragDropWidget::filesAddActived, this,
            &ListPage::receiveFiles);
    connect(m_ui->comToolBarGPage, &ComToolBarGPage::filesAddActived, this,
            &ListPage::receiveFiles);
    connect(m_ui->comToolBarGPage, &ComToolBarGPage::itemclearActived, this,
            &ListPage::askAndClear);
}

QString ListPage::dialogFilter() const
{
    const QString separator = QStringLiteral(";;");
    QStringList entries = fileDialogFilter(m_kind.formatClasses).split(separator);
    const QString first = fileDialogFilter(m_kind.firstClass).section(separator, 0, 0);
    entries.move(std::max(entries.indexOf(first), 0), 0);
    return entries.join(separator);
}

void ListPage::receiveFiles(const QStringList &files, FileAddType type)
{
    trackEvent(m_kind.function, QStringLiteral("file_select"),
               {{QStringLiteral("select_type"), addTypeText(type)},
                {QStringLiteral("select_number"), files.size()}});
    QStringList usable;
    QStringList lost;
    for (const QString &file : files)
        (isUndecodable(file) && !QFileInfo::exists(file) ? lost : usable) += file;
    const QPointer<ListPage> alive(this);
    addFiles(usable);
    if (alive && !lost.isEmpty())
        MediaMessageBox::showMessage(tr("提示"), undecodableText(lost), this);
}

void ListPage::addFiles(const QStringList &files)
{
    ensureBuilt();
    m_rows->addFiles(files);
}

void ListPage::clear()
{
    if (m_rows)
        m_rows->clear();
}

bool ListPage::isWorking() const
{
    return m_rows && m_rows->isWorking();
}

void ListPage::askAndClear()
{
    const QPointer<ListPage> alive(this);
    if (isWorking() &&
        !MediaMessageBox::ask(tr("提示"), tr("有任务正在进行，清空会停止它们。确定清空列表吗？"),
                              this))
        return;
    if (alive)
        clear();
}

void ListPage::showGroupState(RowsView::TaskGrpState state)
{
    const char *name = state == TaskBatch::GroupEnded ? "ConvertName" : "ConvertingName";
    m_ui->btnConvertAll->setText(m_ui->btnConvertAll->property(name).toString());
}

void ListPage::on_btnConvertAll_clicked()
{
    const QString hindrance = m_rows->startHindrance();
    if (hindrance.isEmpty())
        m_rows->convertAll(batchName);
    else
        MediaMessageBox::showMessage(tr("提示"), hindrance, this);
}

void ListPage::raiseChoices()
{
    m_ui->wdtChoices->setProperty("cls", QStringLiteral("bottomBar"));
    m_ui->layout1->insertWidget(m_ui->layout1->indexOf(m_ui->wdtBottom), m_ui->wdtChoices);
}

void ListPage::nameStart(const QString &objectName, const QString &idleText,
                         const QString &busyText)
{
    m_ui->btnConvertAll->setObjectName(objectName);
    m_ui->btnConvertAll->setProperty("ConvertName", idleText);
    m_ui->btnConvertAll->setProperty("ConvertingName", busyText);
    m_ui->btnConvertAll->setText(idleText);
}

QVariant ListPage::setting(QLatin1String key) const
{
    return FunctionSettings::instance().value(functionRecord(m_kind.function).section, key);
}

void ListPage::storeSetting(QLatin1String key, const QVariant &value)
{
    FunctionSettings::instance().setValue(functionRecord(m_kind.function).section, key, value);
}

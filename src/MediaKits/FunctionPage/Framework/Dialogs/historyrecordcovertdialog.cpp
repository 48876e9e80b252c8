// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Dialogs/historyrecordcovertdialog.h"

#include "controls/elidedlabel.h"
#include "controls/plaintooltip.h"
#include "MediaKits/AppInstance/LocalStore/historyrecord.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/MediaFormats/revealfile.h"
#include "ui_historyrecordcovertdialog.h"

#include <QFileInfo>
#include <QShortcut>
#include <QTimer>

namespace {

constexpr int timeColumn = 0;
constexpr int inputColumn = 1;
constexpr int outputColumn = 2;
constexpr int timeWidth = 110;
constexpr int inputWidth = 200;

// Rows that get their labels in one turn of the event loop: more than the dialog shows at once.
constexpr int rowsPerTurn = 25;

const char *const columnProperty = "col";

std::unique_ptr<QTableWidgetItem> makePathItem(const QString &path)
{
    auto item = std::make_unique<QTableWidgetItem>();
    item->setData(Qt::UserRole, path);
    return item;
}

} // namespace

HistoryRecordCovertDialog::HistoryRecordCovertDialog(QWidget *parent)
    : DialogFrame(parent), m_ui(std::make_unique<Ui::HistoryRecordCovertDialog>())
{
    setUpForm(*m_ui);
    setTitle(tr("历史转换记录"));
    QTableWidget *const table = m_ui->tableWidget;
    table->horizontalHeader()->resizeSection(timeColumn, timeWidth);
    table->horizontalHeader()->resizeSection(inputColumn, inputWidth);
    // Not cellActivated: a double click, too, would come as that.
    const auto *enter = new QShortcut(Qt::Key_Return, table, nullptr, nullptr, Qt::WidgetShortcut);
    connect(enter, &QShortcut::activated, this, [this, table] {
        on_tableWidget_cellClicked(table->currentRow(), table->currentColumn());
    });
    fillTable();
}

HistoryRecordCovertDialog::~HistoryRecordCovertDialog() = default;

void HistoryRecordCovertDialog::fillTable()
{
    const QList<HistoryRecord::Record> &records = HistoryRecord::instance().records();
    QTableWidget *const table = m_ui->tableWidget;
    table->setRowCount(records.size());
    for (int row = 0; row < records.size(); ++row) {
        const HistoryRecord::Record &record = records.at(row);
        auto time = std::make_unique<QTableWidgetItem>();
        time->setData(Qt::UserRole, record.datetime);
        table->setItem(row, timeColumn, time.release());
        table->setItem(row, inputColumn, makePathItem(record.inputfile).release());
        table->setItem(row, outputColumn, makePathItem(record.outputfile).release());
    }
    addWidgets();
}

void HistoryRecordCovertDialog::addWidgets()
{
    QTableWidget *const table = m_ui->tableWidget;
    const int end = qMin(m_rowsWithWidgets + rowsPerTurn, table->rowCount());
    for (int row = m_rowsWithWidgets; row < end; ++row) {
        auto *time = new QLabel(table->item(row, timeColumn)->data(Qt::UserRole).toString());
        time->setProperty(columnProperty, timeColumn + 1);
        table->setCellWidget(row, timeColumn, time);
        setPathWidget(row, inputColumn);
        setPathWidget(row, outputColumn);
    }
    m_rowsWithWidgets = end;
    if (end < table->rowCount())
        QTimer::singleShot(0, this, &HistoryRecordCovertDialog::addWidgets);
}

void HistoryRecordCovertDialog::setPathWidget(int row, int column)
{
    QTableWidget *const table = m_ui->tableWidget;
    const QString path = table->item(row, column)->data(Qt::UserRole).toString();
    auto *label = new ElidedLabel(table);
    label->setProperty(columnProperty, column + 1);
    label->setAutoToolTips(false);
    label->setFullText(QFileInfo(path).fileName());
    setPlainToolTip(label, path);
    table->setCellWidget(row, column, label);
}

void HistoryRecordCovertDialog::on_tableWidget_cellClicked(int row, int column)
{
    const QTableWidgetItem *const item = m_ui->tableWidget->item(row, column);
    if (item && column != timeColumn)
        revealInFileManager(item->data(Qt::UserRole).toString());
}

void HistoryRecordCovertDialog::on_btnClearData_clicked()
{
    if (m_ui->tableWidget->rowCount() == 0 ||
        !MediaMessageBox::ask(tr("提示"), tr("清空后无法恢复，确定清空历史记录吗？"), this))
        return;
    m_rowsWithWidgets = 0;
    m_ui->tableWidget->setRowCount(0);
    HistoryRecord::instance().clear();
}

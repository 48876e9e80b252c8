// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Tree/sourcerowwidget.h"

#include "MediaKits/FunctionPage/Framework/Tree/sourcerowform.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaInfo/mediainfobase.h"

SourceRowWidget::SourceRowWidget(QTreeWidgetItem *item, QLatin1String name, QWidget *parent)
    : MediaRowWidget(RowItem(item), parent), m_name(name)
{
    setShown(&RowContent::editorEnabled, false);
}

RowForm *SourceRowWidget::createForm()
{
    auto *form = new SourceRowForm(m_name, isAudioFormat(sourceSuffix()), this);
    connect(form, &SourceRowForm::addPressed, this, &SourceRowWidget::on_btnAddItem_clicked);
    return form;
}

void SourceRowWidget::setFragmentCount(int count)
{
    setShown(&RowContent::fragments, count);
}

// Of the special formats, the reader knows no more than that the file is there.
bool SourceRowWidget::acceptsSource(const MediaInfoBase &reader)
{
    return reader.mediaKind() != MediaInfoBase::NothingUsable || isSpecialFormat(sourceSuffix());
}

void SourceRowWidget::keepSource(const QSharedPointer<MediaInfoData> &)
{
    // The item has it, and there is no task that wants it.
}

void SourceRowWidget::onSourceProbed(const MediaInfoData &info)
{
    change([&](RowContent &content) {
        content.in.detail = MediaFacts::sizeInPixels(info.video);
        content.editorEnabled = true;
    });
}

void SourceRowWidget::missSource()
{
    setShown(&RowContent::hindrance, tr("无法读取该文件"));
}

void SourceRowWidget::on_btnDel_clicked()
{
    emit itemOperationActived(item().treeItem(), ItemOperation::Delete);
}

void SourceRowWidget::on_btnAddItem_clicked()
{
    emit itemOperationActived(item().treeItem(), ItemOperation::AddFragments);
}

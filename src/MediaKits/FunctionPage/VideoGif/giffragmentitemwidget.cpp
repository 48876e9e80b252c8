// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoGif/giffragmentitemwidget.h"

#include "MediaKits/FunctionPage/Framework/Editors/Fragments/fragmentpane.h"
#include "MediaKits/FunctionPage/Framework/Rows/rowcontent.h"
#include "MediaKits/FunctionPage/VideoGif/gifcutfragment.h"

namespace {

QSharedPointer<GifCutFragment> fragmentOf(const QListWidgetItem *item)
{
    return item->data(fragmentRole).value<QSharedPointer<GifCutFragment>>();
}

QString sizeText(const QSize *size)
{
    return size ? MediaFacts::sizeInPixels(size->width(), size->height()) : QString();
}

} // namespace

GifFragmentItemWidget::GifFragmentItemWidget(QListWidgetItem *item, QWidget *parent)
    : FragmentItemWidget(item, fragmentOf(item), sizeText(fragmentOf(item)->size.data()), parent)
{
}

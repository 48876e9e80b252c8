// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Cut/videofragmentitemwidget.h"

#include "MediaKits/FunctionPage/Framework/Editors/Cut/videocutfragment.h"
#include "MediaKits/FunctionPage/Framework/Editors/Fragments/fragmentpane.h"
#include "MediaKits/FunctionPage/Framework/Rows/rowcontent.h"

namespace {

QSharedPointer<VideoCutFragment> fragmentOf(const QListWidgetItem *item)
{
    return item->data(fragmentRole).value<QSharedPointer<VideoCutFragment>>();
}

QString cropText(const CropBox *crop)
{
    return crop ? MediaFacts::sizeInPixels(crop->width, crop->height) : QString();
}

} // namespace

VideoFragmentItemWidget::VideoFragmentItemWidget(QListWidgetItem *item, QWidget *parent)
    : FragmentItemWidget(item, fragmentOf(item), cropText(fragmentOf(item)->cropRect.data()),
                         parent)
{
}

// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoGif/mediagiffunctionpage.h"

#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/FunctionPage/VideoGif/mediagiftreewidget.h"
#include "MediaKits/MediaFormats/mediaformats.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QVariant>

MediaGifFunctionPage::MediaGifFunctionPage(QWidget *parent)
    : ListPage(
          {MediaFunction::Gif, VideoFormatClass, videoFormats, createRowsView<MediaGifTreeWidget>},
          parent)
{
}

void MediaGifFunctionPage::setUpChoices(QWidget *choices)
{
    auto *row = new QHBoxLayout(choices);
    row->setContentsMargins(0, 0, 0, 0);
    auto *box = new QCheckBox(tr("高画质"), choices);
    box->setObjectName(QStringLiteral("chkHighQuality"));
    box->setToolTip(tr("为每个 GIF 单独选取颜色：画面更好，用时更长"));
    row->addWidget(box);
    connect(box, &QCheckBox::toggled, this, &MediaGifFunctionPage::on_chkHighQuality_toggled);
    box->setChecked(setting(FunctionKey::highQuality).toBool());
}

void MediaGifFunctionPage::on_chkHighQuality_toggled(bool checked)
{
    storeSetting(FunctionKey::highQuality, checked);
    static_cast<MediaGifTreeWidget &>(rows()).setHighQuality(checked);
}

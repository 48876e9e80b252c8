// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoCompress/mediacompressfunctionpage.h"

#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/FunctionPage/VideoCompress/compressarithmetic.h"
#include "MediaKits/FunctionPage/VideoCompress/compressslidewidget.h"
#include "MediaKits/FunctionPage/VideoCompress/mediacompresslistwidget.h"
#include "MediaKits/MediaFormats/mediaformats.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVariant>

#include <algorithm>

MediaCompressFunctionPage::MediaCompressFunctionPage(QWidget *parent)
    : ListPage({MediaFunction::Compress, VideoFormatClass, videoFormats,
                createRowsView<MediaCompressListWidget>},
               parent)
{
}

void MediaCompressFunctionPage::setUpChoices(QWidget *choices)
{
    m_list = static_cast<MediaCompressListWidget *>(&rows());
    raiseChoices();
    auto *row = new QHBoxLayout(choices);
    row->setContentsMargins(16, 8, 16, 8);
    row->setSpacing(8);
    row->addWidget(new QLabel(tr("压缩比："), choices));
    auto *slider = new CompressSlideWidget(choices);
    slider->setObjectName(QStringLiteral("compressSlider"));
    row->addWidget(slider);
    row->addStretch(1);

    const double rate =
        std::clamp(setting(FunctionKey::compressRate).toDouble(), smallestRate, wholeRate);
    slider->setValue(sliderOfRate(rate));
    m_list->setCompressRate(rate);
    connect(slider, &CompressSlideWidget::valueChanged, this,
            &MediaCompressFunctionPage::on_compressSlider_valueChanged);
}

void MediaCompressFunctionPage::on_compressSlider_valueChanged(int value)
{
    const double rate = rateOfSlider(value);
    storeSetting(FunctionKey::compressRate, rate);
    m_list->setCompressRate(rate);
}

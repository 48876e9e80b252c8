// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Page/listpage.h"

class MediaCompressListWidget;

/// The page that makes video files smaller.
class MediaCompressFunctionPage : public ListPage
{
    Q_OBJECT

public:
    explicit MediaCompressFunctionPage(QWidget *parent = nullptr);

    void on_compressSlider_valueChanged(int value);

protected:
    void setUpChoices(QWidget *choices) override;

private:
    MediaCompressListWidget *m_list = nullptr;
};

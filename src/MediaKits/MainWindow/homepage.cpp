// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/homepage.h"

#include "MediaKits/MainWindow/homecard.h"
#include "MediaKits/MainWindow/navigationtracking.h"
#include "ui_homepage.h"

namespace {

// As many rows as columns.
constexpr int columns = 3;

QString entrance()
{
    return QStringLiteral("首页点击");
}

QVector<HomeCardEntry> homeCards()
{
    const auto card = [](const char *name, const QString &heading, const QString &text,
                         const char *icon, const char *shadow, MediaFunction function) {
        return HomeCardEntry{QLatin1String("btn") + QLatin1String(name),
                             heading,
                             text,
                             QStringLiteral(":/drawable/home_%1.png").arg(QLatin1String(icon)),
                             QLatin1String(shadow),
                             function};
    };
    return {
        card("MediaConvert", HomePage::tr("视频转换"),
             HomePage::tr("支持市面主流视频格式转换\n一键操作"), "converter", "#240088FF",
             MediaFunction::Convert),
        card("MediaCompress", HomePage::tr("视频压缩"), HomePage::tr("压缩视频大小 一键搞定"),
             "compressor", "#247B61FF", MediaFunction::Compress),
        card("MediaCut", HomePage::tr("视频剪辑"), HomePage::tr("视频剪辑\n一键快速完成"), "cutter",
             "#24FF8A00", MediaFunction::Cut),
        card("MediaMerge", HomePage::tr("视频合并"), HomePage::tr("多种格式视频合并"), "merger",
             "#2400B578", MediaFunction::Merge),
        card("MediaGif", HomePage::tr("视频转GIF"), HomePage::tr("截取目标片段 制作成GIF"), "gif",
             "#24F5478B", MediaFunction::Gif),
        card("MediaDubbing", HomePage::tr("视频配乐"), HomePage::tr("背景音乐 自由添加"), "dubbing",
             "#2400A9C7", MediaFunction::Dubbing),
        card("MediaWatermark", HomePage::tr("添加水印"), HomePage::tr("视频去水印 添加图片水印"),
             "watermark", "#244C6FFF", MediaFunction::Watermark),
        card("AudioConvert", HomePage::tr("音频转换"), HomePage::tr("音频提取\n音频格式转换"),
             "audio", "#24E59A00", MediaFunction::AudioConvert),
        card("BScreencap", HomePage::tr("屏幕录像"), HomePage::tr("便捷屏幕录像功能"), "screencap",
             "#24FF5C4D", MediaFunction::Screencap),
    };
}

} // namespace

HomePage::HomePage(QWidget *parent) : QWidget(parent), m_ui(std::make_unique<Ui::HomePage>())
{
    m_ui->setupUi(this);
    int place = 0;
    for (const HomeCardEntry &entry : homeCards()) {
        auto *card = new HomeCard(entry, m_ui->wdtCards);
        m_ui->lytCards->addWidget(card, place / columns, place % columns);
        connect(card, &HomeCard::clicked, this, [this, index = int(entry.function)] {
            trackNavigation(QStringLiteral("首页"), entrance());
            emit goToFunction(index);
        });
        ++place;
    }
    for (int line = 0; line < columns; ++line) {
        m_ui->lytCards->setColumnStretch(line, 1);
        m_ui->lytCards->setRowStretch(line, 1);
    }
    trackMainView(entrance());
}

HomePage::~HomePage() = default;

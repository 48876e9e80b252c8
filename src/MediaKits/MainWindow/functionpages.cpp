// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/functionpages.h"

#include "MediaKits/FunctionPage/AudioConvert/audioconvertfunctionpage.h"
#include "MediaKits/FunctionPage/VideoCompress/mediacompressfunctionpage.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "MediaKits/FunctionPage/VideoCut/mediacutfunctionpage.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergefunctionpage.h"
#include "MediaKits/MainWindow/emptypage.h"
#include "MediaKits/MainWindow/functionpage.h"
#include "MediaKits/MainWindow/homepage.h"

namespace {

template<class Page>
QWidget *makePage(const FunctionPageEntry & /*entry*/, QWidget *parent)
{
    return new Page(parent);
}

QWidget *makeEmptyPage(const FunctionPageEntry &entry, QWidget *parent)
{
    return new EmptyPage(entry.icon, entry.label, parent);
}

} // namespace

const QVector<FunctionPageEntry> &functionPages()
{
    const auto entry = [](const char *name, const QString &label, const char *icon,
                          decltype(FunctionPageEntry::create) create = makeEmptyPage) {
        return FunctionPageEntry{QLatin1String("btn") + QLatin1String(name), label,
                                 QLatin1String(":/drawable/nav_") + QLatin1String(icon), create};
    };
    static const QVector<FunctionPageEntry> pages = {
        entry("Home", FunctionPage::tr("首页"), "home", makePage<HomePage>),
        entry("Converter", FunctionPage::tr("视频转换"), "converter",
              makePage<MediaConvertFunctionPage>),
        entry("Compressor", FunctionPage::tr("视频压缩"), "compressor",
              makePage<MediaCompressFunctionPage>),
        entry("Cutter", FunctionPage::tr("视频剪裁"), "cutter", makePage<MediaCutFunctionPage>),
        entry("Merger", FunctionPage::tr("视频合并"), "merger", makePage<MediaMergeFunctionPage>),
        entry("Beautifier", FunctionPage::tr("视频美化"), "beautifier"),
        entry("Gif", FunctionPage::tr("视频转GIF"), "gif"),
        entry("Dubbing", FunctionPage::tr("视频配乐"), "dubbing"),
        entry("Shot", FunctionPage::tr("视频截图"), "shot"),
        entry("Watermark", FunctionPage::tr("视频水印"), "watermark"),
        entry("AudioConverter", FunctionPage::tr("音频转换"), "audio",
              makePage<AudioConvertFunctionPage>),
        entry("Screencap", FunctionPage::tr("屏幕录像"), "screencap"),
    };
    return pages;
}

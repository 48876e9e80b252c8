// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/functionpages.h"

#include "MediaKits/AppInstance/LocalStore/mediafunction.h"
#include "MediaKits/FunctionPage/AudioConvert/audioconvertfunctionpage.h"
#include "MediaKits/FunctionPage/ScreenRecord/screencapfuncionpage.h"
#include "MediaKits/FunctionPage/VideoBeautify/mediabeautifyfunctionpage.h"
#include "MediaKits/FunctionPage/VideoCompress/mediacompressfunctionpage.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertfunctionpage.h"
#include "MediaKits/FunctionPage/VideoCut/mediacutfunctionpage.h"
#include "MediaKits/FunctionPage/VideoDubbing/mediadubbingfunctionpage.h"
#include "MediaKits/FunctionPage/VideoGif/mediagiffunctionpage.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergefunctionpage.h"
#include "MediaKits/FunctionPage/VideoShot/mediashotfunctionpage.h"
#include "MediaKits/FunctionPage/VideoWatermark/mediawatermarkfunctionpage.h"
#include "MediaKits/MainWindow/homepage.h"

namespace {

template<class Page>
QWidget *makePage(QWidget *parent)
{
    return new Page(parent);
}

} // namespace

const QVector<FunctionPageEntry> &functionPages()
{
    const auto entry = [](MediaFunction function, const char *name, const char *icon,
                          decltype(FunctionPageEntry::create) create) {
        return FunctionPageEntry{QLatin1String("btn") + QLatin1String(name),
                                 functionRecord(function).title,
                                 QLatin1String(":/drawable/nav_") + QLatin1String(icon), create};
    };
    static const QVector<FunctionPageEntry> pages = {
        entry(MediaFunction::Home, "Home", "home", makePage<HomePage>),
        entry(MediaFunction::Convert, "Converter", "converter", makePage<MediaConvertFunctionPage>),
        entry(MediaFunction::Compress, "Compressor", "compressor",
              makePage<MediaCompressFunctionPage>),
        entry(MediaFunction::Cut, "Cutter", "cutter", makePage<MediaCutFunctionPage>),
        entry(MediaFunction::Merge, "Merger", "merger", makePage<MediaMergeFunctionPage>),
        entry(MediaFunction::Beautify, "Beautifier", "beautifier",
              makePage<MediaBeautifyFunctionPage>),
        entry(MediaFunction::Gif, "Gif", "gif", makePage<MediaGifFunctionPage>),
        entry(MediaFunction::Dubbing, "Dubbing", "dubbing", makePage<MediaDubbingFunctionPage>),
        entry(MediaFunction::Shot, "Shot", "shot", makePage<MediaShotFunctionPage>),
        entry(MediaFunction::Watermark, "Watermark", "watermark",
              makePage<MediaWatermarkFunctionPage>),
        entry(MediaFunction::AudioConvert, "AudioConverter", "audio",
              makePage<AudioConvertFunctionPage>),
        entry(MediaFunction::Screencap, "Screencap", "screencap", makePage<ScreencapFuncionPage>),
    };
    return pages;
}

// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoShot/frameshotdialog.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "resources/look.h"
#include "stallmeter.h"
#include "support/factsof.h"

#include <QApplication>
#include <QEventLoop>
#include <QLabel>

#include <algorithm>
#include <functional>

namespace {

constexpr int lookMs = 50; // counting the pictures is work as well

int picturesIn(const QWidget &dialog)
{
    const auto labels = dialog.findChildren<QLabel *>(QStringLiteral("lblImage"));
    return int(std::count_if(labels.begin(), labels.end(), [](const QLabel *label) {
        return !label->pixmap(Qt::ReturnByValue).isNull();
    }));
}

void wait(const std::function<bool()> &condition)
{
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (condition())
            loop.quit();
    });
    look.start(lookMs);
    loop.exec();
}

} // namespace

// Opens a film in the editor of shots with moments (ms) that have no pictures yet.
int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Look::apply();
    const QStringList words = QApplication::arguments();
    const QString film = words.value(1);
    QVariantList moments;
    for (const QString &word : words.mid(2))
        moments +=
            QVariantMap{{QStringLiteral("pos"), word.toInt()}, {QStringLiteral("scale"), 1.0F}};
    FrameShotDialog dialog;
    dialog.showSource(film, factsOf(film));
    dialog.show();
    auto *player = dialog.findChild<CSVideoPlayer *>();
    wait([player] { return player->toldPosition() > 0; });
    player->play(false);

    QElapsedTimer total;
    total.start();
    const StallMeter meter;
    dialog.setOptions({{QStringLiteral("images"), moments}});
    wait([&] { return picturesIn(dialog) == moments.size(); });
    QTextStream(stdout) << "thumbnails ms " << total.elapsed() << "\nlongest stall ms "
                        << meter.longestMs() << '\n';
    return 0;
}

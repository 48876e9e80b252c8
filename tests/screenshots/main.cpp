// SPDX-License-Identifier: MIT
// morvane_screenshots OUTPUT_DIR MEDIA_DIR [NAME...]: a picture of every window, or of those named.
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "resources/look.h"
#include "screenshots/shots.h"
#include "screenshots/stage.h"
#include "support/utf8.h"

#include <QApplication>
#include <QTranslator>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 3) {
        std::fputs("usage: morvane_screenshots OUTPUT_DIR MEDIA_DIR [NAME...]\n", stderr);
        return 2;
    }
    QTranslator translator;
    if (!translator.load(":/languages/qm/qt_zh_CN.qm"_s) || !Look::apply())
        return 1;
    QApplication::installTranslator(&translator);

    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);

    const QStringList wanted = arguments.mid(3);
    Stage stage(arguments.at(2));
    for (const Shot &shot : allShots()) {
        const bool isWanted = wanted.isEmpty() || wanted.contains(shot.name);
        if (!isWanted && shot.standsAlone)
            continue;
        shot.prepare(stage);
        const QString path = arguments.at(1) + u'/' + shot.name + ".png"_s;
        if (isWanted && !stage.save(path)) {
            std::fprintf(stderr, "%s can't be written\n", qPrintable(path));
            return 1;
        }
        stage.tidy();
    }
    return 0;
}

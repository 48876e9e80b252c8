// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/updatecheck.h"

#include "controls/runmodal.h"
#include "controls/toast.h"
#include "MediaKits/AppUpdater/appupdater.h"
#include "MediaKits/AppUpdater/updatedialog.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/MainWindow/mainwindow.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>

namespace {

constexpr int toastMs = 3000;
constexpr int patienceMs = 500;

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(UpdateCheck)
};

// Why this program can't be asked to look; empty when it can.
QString obstacle(const UpdateSettings &settings)
{
    if (settings.key.isEmpty())
        return Texts::tr("此版本随系统的软件包管理器更新，请在那里检查新版本。");
    if (settings.host.isEmpty())
        return Texts::tr("尚未设置更新服务，暂时无法检查新版本。");
    return {};
}

Toast *tell(const QString &text, int ms, QWidget *window)
{
    return Toast::showToast(text, ms, Toast::centred, Toast::centred, window);
}

// A quick answer needs no word about it.
bool checkWithHint(AppUpdater &updater, UpdateRecord &record, QWidget *window)
{
    QPointer<Toast> hint;
    QTimer patience;
    patience.setSingleShot(true);
    QObject::connect(&patience, &QTimer::timeout, window,
                     [&] { hint = tell(Texts::tr("正在检查更新…"), 0, window); });
    patience.start(patienceMs);
    const bool worked = updater.check(record);
    delete hint.data();
    return worked;
}

} // namespace

void checkForUpdate(MainWindow *window, AppUpdater &updater)
{
    const QString reason = obstacle(updater.settings());
    if (!reason.isEmpty()) {
        MediaMessageBox::showMessage(Texts::tr("检查更新"), reason, window);
        return;
    }
    if (updater.isChecking())
        return;
    const QPointer<MainWindow> asker = window;
    UpdateRecord record;
    const bool worked = checkWithHint(updater, record, window);
    if (!asker)
        return;
    if (!worked || record.apkLink.isEmpty()) {
        const QString answer =
            worked ? Texts::tr("当前已是最新版本") : Texts::tr("无法连接更新服务，请稍后再试");
        tell(answer, toastMs, window);
        return;
    }
    const QPointer<UpdateDialog> dialog = new UpdateDialog(
        updater, record, [window] { return window->mayLeave(); }, window);
    dialog->exec();
    if (dialog && dialog->isInstalling())
        window->leaveProgram();
    delete dialog.data();
}

void noteStart(MainWindow *window)
{
    const QString failure = AppUpdater::instance().confirmStart();
    if (!failure.isEmpty())
        MediaMessageBox::showMessage(
            Texts::tr("软件升级"), Texts::tr("升级没有成功，仍在使用原来的版本。\n%1").arg(failure),
            window);
}

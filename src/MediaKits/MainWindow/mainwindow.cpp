// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/mainwindow.h"

#include "controls/edgeresizer.h"
#include "controls/windowshadow.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppInstance/LocalStore/mediafunction.h"
#include "MediaKits/AppInstance/LocalStore/removedir.h"
#include "MediaKits/DataTracker/oskdatatracker.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/FunctionPage/ScreenRecord/screencapfuncionpage.h"
#include "MediaKits/MainWindow/appmenu.h"
#include "MediaKits/MainWindow/apptraymanager.h"
#include "MediaKits/MainWindow/customerservice.h"
#include "MediaKits/MainWindow/exittipsdialog.h"
#include "MediaKits/MainWindow/windowplace.h"
#include "platform/windowmanager.h"
#include "ui_mainwindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QShortcut>
#include <QTimer>

namespace {

constexpr int mainPageView = 1;
constexpr int shadowWidth = 10;
constexpr QRgb shadowColour = 0x24000000;
// While another window of the program has the user's attention.
constexpr QRgb inactiveShadowColour = 0x14000000;
constexpr int popupGap = 11;
constexpr int resizeBorder = 4;
constexpr int settleMs = 200;

} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent), m_ui(std::make_unique<Ui::MainWindow>())
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_TranslucentBackground);
    m_shadow = new WindowShadow(this);
    m_shadow->setColour(QColor::fromRgba(shadowColour));
    m_shadow->setRadius(shadowWidth);
    m_ui->btnCService->hide();
    m_tray = new AppTrayManager(this);
    connect(m_tray, &AppTrayManager::activated, this, &MainWindow::comeToFront);
    connect(m_tray, &AppTrayManager::leaveChosen, this, [this] {
        if (mayLeave())
            leaveProgram();
    });
    connectRecorder();
    OskDataTracker::instance().trackTableEvent(mainPageView);

    // Otherwise the first button of the title bar would look chosen.
    m_ui->wdtMain->setFocus();
    new EdgeResizer(this, resizeBorder);
    auto *leaveKey = new QShortcut(QKeySequence(QStringLiteral("Ctrl+Q")), this);
    connect(leaveKey, &QShortcut::activated, this, &MainWindow::on_btnClose_clicked);
}

// Also while the window isn't to be seen, a recording is told of and controlled by the tray.
void MainWindow::connectRecorder()
{
    ScreencapFuncionPage *page = m_ui->pgFunction->recordPage();
    connect(page, &ScreencapFuncionPage::phaseChanged, m_tray, &AppTrayManager::showPhase);
    connect(page, &ScreencapFuncionPage::clockChanged, m_tray, &AppTrayManager::showClock);
    connect(page, &ScreencapFuncionPage::warned, m_tray, &AppTrayManager::tell);
    connect(page, &ScreencapFuncionPage::rescued, this, &MainWindow::offerRescued);
    connect(m_tray, &AppTrayManager::pauseChosen, page, &ScreencapFuncionPage::pauseOrResume);
    connect(m_tray, &AppTrayManager::stopChosen, page,
            &ScreencapFuncionPage::on_wbnCapStop_clicked);
}

void MainWindow::offerRescued(const QStringList &files)
{
    const QString question = tr("上次录制屏幕时程序意外中断，已找回 %1 个录像。现在去查看吗？");
    if (MediaMessageBox::ask(tr("提示"), question.arg(files.size()), this))
        m_ui->pgFunction->jumpTo(int(MediaFunction::Screencap));
}

MainWindow::~MainWindow()
{
    WindowPlace::store(*this);
    removeDirRecursively(tempDir());
}

void MainWindow::open()
{
    WindowPlace::restore(*this);
    show();
}

bool MainWindow::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::WindowActivate:
        m_shadow->setColour(QColor::fromRgba(shadowColour));
        break;
    case QEvent::WindowDeactivate: {
        const QWidget *modal = QApplication::activeModalWidget();
        if (modal != nullptr && !modal->inherits("QFileDialog"))
            m_shadow->setColour(QColor::fromRgba(inactiveShadowColour));
        break;
    }
    case QEvent::WindowStateChange:
        showWindowState();
        break;
    default:
        break;
    }
    return QMainWindow::event(event);
}

void MainWindow::showWindowState()
{
    const bool maximized = isMaximized();
    m_ui->btnMax->setToolTip(maximized ? tr("还原") : tr("最大化"));
    m_ui->btnMax->setAccessibleName(m_ui->btnMax->toolTip());
    m_ui->btnMax->setIcon(QIcon(maximized ? QStringLiteral(":/drawable/win_restore.png")
                                          : QStringLiteral(":/drawable/win_max.png")));
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (m_tray->isIconVisible()) {
        event->ignore();
        hide();
        return;
    }
    event->setAccepted(mayLeave());
    if (event->isAccepted())
        leave(ExitMode::Leave);
}

void MainWindow::on_btnClose_clicked()
{
    const AppIni &ini = AppIni::instance();
    // An earlier answer may ask for a tray that isn't there any more.
    const auto answered = m_tray->isIconVisible()
                              ? ExitMode(ini.value(AppIni::Key::ExitMode).toInt())
                              : ExitMode::Leave;
    if (m_tray->isIconVisible() && ini.value(AppIni::Key::IsExitTips).toBool()) {
        ExitTipsDialog dialog(this);
        if (dialog.exec() == QDialog::Accepted)
            leave(dialog.mode());
    } else if (answered != ExitMode::Leave || mayLeave()) {
        leave(answered);
    }
}

// Where nothing has asked yet.
bool MainWindow::mayLeave()
{
    const QString question = m_ui->pgFunction->leaveQuestion();
    return question.isEmpty() || MediaMessageBox::ask(tr("提示"), question, this);
}

void MainWindow::leaveProgram()
{
    m_tray->hideIcon();
    leave(ExitMode::Leave);
}

void MainWindow::leave(ExitMode mode)
{
    // Also for a number that the file shouldn't hold: a close button has to do something.
    if (mode != ExitMode::Leave) {
        hide();
        return;
    }
    m_ui->pgFunction->finishWork();
    QCoreApplication::exit(0);
}

// What takes longer than the system waits is left for the next start.
void MainWindow::finishWork()
{
    constexpr int limitMs = 5000;
    QTimer::singleShot(limitMs, this, [] { QCoreApplication::quit(); });
    m_ui->pgFunction->finishWork();
}

void MainWindow::on_btnMax_clicked()
{
    if (isMaximized())
        showNormal();
    else
        showMaximized();
}

void MainWindow::on_btnMin_clicked()
{
    showMinimized();
}

void MainWindow::on_btnMore_clicked()
{
    auto *menu = new AppMenu(this);
    menu->move(m_ui->btnMore->mapToGlobal(QPoint(0, m_ui->btnMore->height() + popupGap)));
    menu->show();
}

void MainWindow::on_btnCService_clicked()
{
    auto *popup = new CustomerService(this);
    popup->fitContent();
    // A hidden button has no place of its own.
    const QWidget *button = m_ui->btnCService->isVisible() ? m_ui->btnCService : m_ui->btnMore;
    popup->move(button->mapToGlobal(
        QPoint((button->width() - popup->width()) / 2, button->height() + popupGap)));
    popup->show();
}

void MainWindow::sltMessageReceived(const QString & /*msg*/)
{
    comeToFront();
}

void MainWindow::comeToFront()
{
    noteUserAction();
    showNormal();
    raise();
    bringToCurrentDesktop(winId());
    takeKeyboard();
    // A window manager that has yet to bring the window back may pass the wish over.
    QTimer::singleShot(settleMs, this, &MainWindow::takeKeyboard);
}

void MainWindow::takeKeyboard()
{
    QWidget *modal = QApplication::activeModalWidget();
    QWidget *front = modal ? modal : this;
    if (!front->isVisible() || (front->isActiveWindow() && hasInputFocus(front->winId())))
        return;
    front->raise();
    front->activateWindow();
    // Qt hasn't heard yet that it lost the focus when it was hidden, and won't notice its return.
    if (QGuiApplication::focusWindow() == windowHandle() && !QApplication::activeWindow())
        QApplication::setActiveWindow(this);
}

// SPDX-License-Identifier: MIT
#include "program/programinuse.h"

#include "controls/filechooser.h"
#include "MediaKits/AppInstance/appinstance.h"
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "platform/utf8locale.h"
#include "support/toolrun.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QStackedWidget>
#include <QtTest>

namespace {

// A page's list or tree of files.
QAbstractItemView *rowsOf(const QWidget &page)
{
    auto *list = child<QAbstractItemView>(page, "convertList");
    return list ? list : child<QAbstractItemView>(page, "convertTree");
}

} // namespace

int runInProgram(int argc, char *argv[], QObject &test)
{
    ensureUtf8Locale();
    AppInstance instance(argc, argv);
    if (!instance.init())
        return 1;
    return QTest::qExec(&test, argc, argv);
}

void ProgramInUse::open()
{
    for (const QLatin1String section :
         {FunctionSection::converter, FunctionSection::compressor, FunctionSection::cutter,
          FunctionSection::merger, FunctionSection::audioConverter})
        FunctionSettings::instance().setValue(section, FunctionKey::outPath, path("out"_s));
    ScreenFilm::make(film());
    m_window = std::make_unique<MainWindow>();
    QObject::connect(static_cast<QtSingleApplication *>(qApp),
                     &QtSingleApplication::messageReceived, m_window.get(),
                     &MainWindow::sltMessageReceived);
    m_window->open();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void ProgramInUse::leave()
{
    m_window.reset();
    QVERIFY(processesWith(m_folder.path()).isEmpty());
}

void ProgramInUse::tidy()
{
    if (QWidget *window = preview())
        window->close();
    if (const QAbstractItemView *rows = rowsOf(currentPage())) {
        Desktop::click(*child(currentPage(), "btnClear"));
        QTRY_COMPARE(rows->model()->rowCount(), 0);
    }
}

const QWidget &ProgramInUse::currentPage() const
{
    return *child<QStackedWidget>(*m_window, "skdWdtFunction")->currentWidget();
}

bool ProgramInUse::goTo(const char *pageButton)
{
    auto *button = child<QPushButton>(*m_window, pageButton);
    Desktop::click(*button);
    return QTest::qWaitFor([button] { return button->isChecked(); });
}

QWidget *ProgramInUse::addFilm(const char *pageButton, const char *ready, const QString &film)
{
    if (!goTo(pageButton))
        return nullptr;
    const QAbstractItemView *rows = rowsOf(currentPage());
    const int last = rows->model()->rowCount();
    FileChooser::setNextAnswer({film.isEmpty() ? this->film() : film});
    QWidget *add = child(currentPage(), "btnAddFile");
    if (!QTest::qWaitFor([add] { return add->isVisible(); }))
        return nullptr;
    Desktop::click(*add);
    QWidget *row = nullptr;
    const bool isRead = QTest::qWaitFor(
        [&] {
            row = rows->indexWidget(rows->model()->index(last, 0));
            const QWidget *button = row ? child(*row, ready) : nullptr;
            return row && (button == nullptr || button->isEnabled());
        },
        limitMs);
    return isRead ? row : nullptr;
}

void ProgramInUse::clickToastAway()
{
    QTRY_VERIFY(visibleWindow("Toast"));
    Desktop::click(onScreen(*child(*preview(), "lblDuration")).center());
    QTRY_VERIFY(!visibleWindow("Toast"));
}

QColor ProgramInUse::seenOfFilm(const QWidget &window)
{
    return Desktop::seenAt(onScreen(*child(window, "lblVideoShow")).center() + QPoint(30, 30));
}

void ProgramInUse::awaitColour(const QWidget &window, const QColor &colour)
{
    QTRY_VERIFY_WITH_TIMEOUT(Desktop::isLike(seenOfFilm(window), colour), limitMs);
}

void ProgramInUse::awaitFilm(const QWidget &window)
{
    QTRY_VERIFY_WITH_TIMEOUT(ScreenFilm::isFilm(seenOfFilm(window)), limitMs);
}

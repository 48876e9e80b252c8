// SPDX-License-Identifier: MIT
#pragma once

#include "controls/filechooser.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskrowwidget.h"
#include "MediaKits/MediaTasksManager/converttaskparam.h"
#include "resources/look.h"
#include "support/guisupport.h"
#include "support/mediaprobe.h"
#include "support/testfile.h"
#include "support/testmedia.h"

#include <QDialog>
#include <QListWidget>
#include <QStackedWidget>
#include <QtTest>

/// Before the first page: the program's look, and no preview that opens by itself.
inline void preparePages()
{
    QVERIFY(Look::apply());
    AppIni::instance().setValue(AppIni::Key::PreviewShowWhenAdded, false);
}

/// Clicks a preset in the open format dialog.
inline void pickPreset(quint32 id)
{
    constexpr int presetIdRole = Qt::UserRole + 2;
    QWidget *dialog = nullptr;
    QTRY_VERIFY((dialog = visibleWindow("MediaFormatDialog")));
    auto *list = child<QListWidget>(*dialog, "lwdtParamInfos");
    for (int i = 0; i < list->count(); ++i) {
        if (list->item(i)->data(presetIdRole).toUInt() != id)
            continue;
        list->scrollToItem(list->item(i));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualItemRect(list->item(i)).center());
        QTRY_VERIFY(!visibleWindow("MediaFormatDialog"));
        return;
    }
    QFAIL("the dialog does not list the preset");
}

/// Whether what a row tells of its progress is more than a beginning.
inline bool isGoing(const QString &progress)
{
    return progress.endsWith(u'%') && progress > "0.1%"_s;
}

/// A list page in a window of its own, driven by its buttons.
template<class Page>
class PageTest
{
public:
    static constexpr int endLimitMs = 60000;

    /// @param preset stored in the page's settings, as if chosen earlier
    PageTest(QLatin1String section, quint32 preset)
    {
        FunctionSettings &settings = FunctionSettings::instance();
        settings.setValue(section, FunctionKey::outPath, out());
        settings.setValue(section, FunctionKey::encParamID, preset);
        page = std::make_unique<Page>();
        page->resize(1000, 640);
        page->show();
        shown = QTest::qWaitForWindowActive(page.get());
    }

    QString out() const { return folder.filePath("out"_s); }

    /// Through the file dialog's front and the tool bar's button.
    void add(const QStringList &files)
    {
        FileChooser::setNextAnswer(files);
        press(*page, "btnAddFile");
    }

    /// Adds files to an empty page and waits for their rows, until the files have been read.
    /// @param readyButton enabled in a row whose file has been read; null not to wait for that
    void addRows(const QStringList &files, const char *readyButton = nullptr)
    {
        add(files);
        QTRY_COMPARE(list()->count(), files.size());
        for (int i = 0; row(0) && i < files.size(); ++i)
            QTRY_VERIFY(!row(i)->task()->isHeld());
        for (int i = 0; readyButton && i < files.size(); ++i)
            QTRY_VERIFY(child(*rowWidget(i), readyButton) &&
                        child(*rowWidget(i), readyButton)->isEnabled());
    }

    QListWidget *list() const { return child<QListWidget>(*page, "convertList"); }
    QWidget *rowWidget(int index) const { return list()->itemWidget(list()->item(index)); }
    TaskRowWidget *row(int index) const { return qobject_cast<TaskRowWidget *>(rowWidget(index)); }
    ConvertTaskParam &param(int index) const
    {
        return *static_cast<ConvertTaskParam *>(row(index)->task()->param());
    }
    MediaTask::State state(int index) const { return row(index)->task()->state(); }
    QString text(int index, const char *label) const
    {
        return child<QLabel>(*rowWidget(index), label)->text();
    }
    /// 0 idle, 1 working, 2 done
    int statePage(int index) const
    {
        return child<QStackedWidget>(*rowWidget(index), "swdtState")->currentIndex();
    }
    /// Path of the result of a row that is started by its own button; empty when it fails.
    QString convert(int index) const { return converted(*row(index)); }
    QString startAllText() const { return child<QPushButton>(*page, "btnConvertAll")->text(); }
    bool isEmptyShown() const
    {
        return child<QStackedWidget>(*page, "skdWdtList")->currentIndex() == 0;
    }
    /// Finished files, without the marker directory.
    QStringList results() const { return QDir(out()).entryList(QDir::Files | QDir::Hidden); }

    QTemporaryDir folder;
    std::unique_ptr<Page> page;
    bool shown = false;

protected:
    static QString converted(TaskRowWidget &row)
    {
        press(row, "btnConvert");
        const auto state = [&row] { return row.task()->state(); };
        const bool ended = QTest::qWaitFor([&] { return MediaTask::isFinal(state()); }, endLimitMs);
        return ended && state() == MediaTask::FINISHED ? row.outputPath() : QString();
    }
};

/// The same of a page whose rows have an editor.
template<class Page>
class EditorPageTest : public PageTest<Page>
{
public:
    /// @param editor class of the dialog
    /// @param button of a row, opens it
    EditorPageTest(QLatin1String section, quint32 preset, const char *editor, const char *button)
        : PageTest<Page>(section, preset), m_editor(editor), m_button(button)
    {
    }

    /// Opens the editor by the row's button, modally, for `act`, which has to end it.
    template<class Act>
    void edit(int row, Act act)
    {
        bool opened = false;
        whenModal(m_editor, [&](QWidget &dialog) {
            opened = true;
            act(dialog);
            // After a check that failed, too.
            if (dialog.isVisible())
                qobject_cast<QDialog *>(&dialog)->done(QDialog::Rejected);
        });
        press(*this->rowWidget(row), m_button);
        QVERIFY(opened);
    }

private:
    const char *const m_editor;
    const char *const m_button;
};

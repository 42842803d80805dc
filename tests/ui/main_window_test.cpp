// The main window around the project file: a save that fails is told and the
// window keeps the model's modified mark; a close whose save fails leaves the
// model on screen; the window goes without running its dock handlers.
#include <QAction>
#include <QProgressDialog>
#include <QStatusBar>
#include <QTimer>
#include <QtTest>
#include <chrono>
#include <filesystem>
#include <sstream>

#include "core/ui/sheet_bridge.h"
#include "entry/entry_path.h"
#include "main_window_fixture.h"
#include "support/temp_dir.h"

using namespace tarvokin;

class MainWindowTest : public QObject {
    Q_OBJECT

    static bool told(const std::vector<std::string>& messages, const char* part) {
        for (const std::string& m : messages)
            if (m.find(part) != std::string::npos) return true;
        return false;
    }

private slots:
    void aFailedSaveIsToldAndTheWindowKeepsItsMark() {
        test::MainWindowFixture f;
        const std::filesystem::path file = f.wb.projectFilePath;
        const std::string before = test::readBytes(file);
        std::filesystem::permissions(file, std::filesystem::perms(0444));
        ui::guarded(f.wb, [&] { enterField(f.wb, F_GEO_SF_REGLAGES::H30, "1500"); });
        f.window->toolbarButton(button::Save)->trigger();
        QVERIFY(told(f.messages, "lecture seule"));
        QVERIFY(f.window->isWindowModified());
        QVERIFY(f.window->windowTitle().contains(QStringLiteral("[*]")));
        QCOMPARE(test::readBytes(file), before);

        // Once the file can be written again, the save clears the mark.
        std::filesystem::permissions(file, std::filesystem::perms(0644));
        f.window->toolbarButton(button::Save)->trigger();
        QVERIFY(!f.window->isWindowModified());
        QVERIFY(test::readBytes(file) != before);
    }

    void openingAProjectAndItsAirfoilsWritesNothing() {
        test::MainWindowFixture f;
        const std::filesystem::path project = f.wb.projectFilePath, catalogue = f.wb.catalogueFilePath();
        const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(48);
        for (const auto& file : {project, catalogue}) std::filesystem::last_write_time(file, old);
        OpenProject(f.wb, project.string());
        f.window->toolbarButton(button::Profils)->trigger();
        QTRY_VERIFY(!f.wb.sheet.text(F_PROFILS::T_CXMin[0]).empty());
        QTest::qWait(100);  // the queued filling of the slots has run
        QCOMPARE(std::filesystem::last_write_time(project), old);
        QCOMPARE(std::filesystem::last_write_time(catalogue), old);
    }

    void aCloseWhoseSaveFailsLeavesTheModelOnScreen() {
        test::MainWindowFixture f;
        f.wb.settings.saveOnExit = true;
        ui::guarded(f.wb, [&] { enterField(f.wb, F_GEO_SF_REGLAGES::H30, "1500"); });
        std::filesystem::permissions(f.wb.projectFilePath, std::filesystem::perms(0444));
        QVERIFY(!f.window->close());
        QVERIFY(f.window->isVisible());
        QVERIFY(told(f.messages, "lecture seule"));
        std::filesystem::permissions(f.wb.projectFilePath, std::filesystem::perms(0644));
        QVERIFY(f.window->close());
    }

    void closingTheWindowEndsASolverRunAndItsScripts() {
        test::MainWindowFixture f;
        const std::filesystem::path solver = f.dir / "hang.sh", pidFile = f.dir / "child.pid";
        test::writeBytes(solver, "#!/bin/sh\nsleep 60 &\necho $! > " + pidFile.string() + "\nwait\n");
        std::filesystem::permissions(solver, std::filesystem::perms::owner_all);
        f.wb.settings.xfoilPath = solver.string();
        f.wb.settings.saveOnExit = false;
        f.wb.settings.xfoilTimeout = 10;  // a run left to itself would end there
        // The window is closed while the run waits, from the run's own event processing.
        QTimer poll;
        connect(&poll, &QTimer::timeout, f.window.get(), [&] {
            if (!test::readBytes(pidFile).empty()) f.window->close();
        });
        poll.start(50);
        QVERIFY(!f.window->computePolar(0, 100000));
        QVERIFY(!f.window->statusBar()->currentMessage().contains(QStringLiteral("temps limite")));
        const std::string pid = test::readBytes(pidFile);
        QVERIFY(!pid.empty());
        QTRY_VERIFY(test::readBytes("/proc/" + std::to_string(std::stoi(pid)) + "/stat").empty() ||
                    test::readBytes("/proc/" + std::to_string(std::stoi(pid)) + "/stat").find(") Z ") !=
                        std::string::npos);
        QVERIFY(!std::filesystem::exists(f.dir / "START_XFOIL.CMD"));
        QVERIFY(!std::filesystem::exists(f.dir / "START_XFOIL.RUN"));
    }

    void theBatchDialogShowsEachRunAndItsCancelStopsThemAll() {
        test::MainWindowFixture f;
        const std::filesystem::path solver = f.dir / "hang.sh", children = f.dir / "children";
        test::writeBytes(solver, "#!/bin/sh\nsleep 60 &\necho $! >> " + children.string() + "\nwait\n");
        std::filesystem::permissions(solver, std::filesystem::perms::owner_all);
        f.wb.settings.xfoilPath = solver.string();
        f.wb.settings.xfoilTimeout = 20;  // a run left to itself would end there
        QString shown;
        QTimer poll;
        connect(&poll, &QTimer::timeout, f.window.get(), [&] {
            auto* dialog = f.window->findChild<QProgressDialog*>(QStringLiteral("XfoilProgress"));
            const std::string started = test::readBytes(children);
            if (!dialog || std::count(started.begin(), started.end(), '\n') < 2) return;
            if (!dialog->labelText().contains(QStringLiteral("Re 50000"))) return;
            shown = dialog->labelText();
            dialog->cancel();
        });
        poll.start(50);
        f.window->computePolars(0, {25000, 50000, 100000, 220000});
        // Both runs under way, one line each.
        QVERIFY2(shown.contains(QStringLiteral("Re 25000")) && shown.contains(QStringLiteral("Re 50000")),
                 qPrintable(shown));
        QVERIFY(f.window->statusBar()->currentMessage().contains(QStringLiteral("annulé")));
        std::istringstream in(test::readBytes(children));
        int count = 0;
        for (long pid = 0; in >> pid; ++count)
            QTRY_VERIFY(test::readBytes("/proc/" + std::to_string(pid) + "/stat").empty() ||
                        test::readBytes("/proc/" + std::to_string(pid) + "/stat").find(") Z ") != std::string::npos);
        QCOMPARE(count, 2);  // the two others never started
    }

    void theWindowGoesWithoutTouchingThePanels() {
        // Its docks are hidden as they are deleted; their handlers must not
        // run then (they would close the panels, on a half-destroyed window).
        test::MainWindowFixture f;
        for (int b : {button::Wing, button::Reglages, button::Profils}) f.wb.setOpen(b, true);
        QTRY_VERIFY(f.window->isVisible());
        f.window.reset();
        for (int b : {button::Wing, button::Reglages, button::Profils}) QVERIFY(f.wb.isOpen(b));
    }
};

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"

// The four language files against the windows themselves, and a change of
// language while every window is open.
#include <QAbstractButton>
#include <QChart>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <QtTest>
#include <map>
#include <set>

#include "core/language.h"
#include "core/messages.h"
#include "core/settings.h"
#include "core/ui/cell_widgets.h"
#include "core/ui/chart_panel.h"
#include "core/ui/language_apply.h"
#include "entry/entry_path.h"
#include "main_window_fixture.h"
#include "support/temp_dir.h"

using namespace tarvokin;

namespace {

const char* kFiles[4] = {"Francais.lng", "Anglais.lng", "Espagnol.lng", "Italien.lng"};

// The French texts of every window, by window and key.
std::map<QString, std::map<QString, QString>> frenchTexts(test::MainWindowFixture& f) {
    std::map<QString, std::map<QString, QString>> texts;
    for (QWidget* form : f.window->everyWindow()) {
        auto& keys = texts[form->objectName()];
        for (const ui::CaptionText& c : ui::WindowCaptions(form)) keys[c.key] = c.french;
    }
    return texts;
}

QWidget* form(test::MainWindowFixture& f, const char* name) {
    for (QWidget* w : f.window->everyWindow())
        if (w->objectName() == QLatin1String(name)) return w;
    return nullptr;
}

QString fileText(const LanguageTable& t, const char* section, const char* key) {
    const auto v = t.find(section, key);
    return v ? QString::fromStdString(normaliseLineEnds(*v)) : QString();
}

void chooseLanguage(test::MainWindowFixture& f, int code) {
    f.bridge->enter([&] { Click(f.wb, "F_Main", "IM_Language", code); });
}

QString menuTitle(test::MainWindowFixture& f, const char* name) {
    auto* m = f.window->menuBar()->findChild<QMenu*>(QString::fromLatin1(name));
    return m ? m->title() : QString();
}

}  // namespace

class LanguageTest : public QObject {
    Q_OBJECT

private slots:
    // Every caption, tooltip, tab, list word and chart title of every window
    // has its key in each of the four files, and no file holds a key that
    // names nothing; the French file holds the windows' own texts.
    void everyTextOfEveryWindowIsInEveryFile() {
        test::MainWindowFixture f;
        f.window->openEveryWindow();
        const auto french = frenchTexts(f);
        QVERIFY(french.size() >= 30);
        QStringList problems;
        for (const char* file : kFiles) {
            const auto table = LanguageTable::load(f.dir.path() / "lang" / file);
            QVERIFY2(!table->empty(), file);
            for (const auto& [formName, keys] : french) {
                for (const auto& [key, text] : keys) {
                    const auto v = table->find(formName.toStdString(), key.toStdString());
                    if (!v) {
                        problems << QStringLiteral("%1: no %2.%3").arg(file, formName, key);
                        continue;
                    }
                    const QString value = QString::fromStdString(normaliseLineEnds(*v));
                    if (std::string_view(file) == "Francais.lng" && value != text &&
                        !(value.size() == 127 && text.startsWith(value)))
                        problems << QStringLiteral("%1: %2.%3 is \"%4\", the window shows \"%5\"")
                                        .arg(file, formName, key, value, text);
                }
            }
            const auto ids = MessageIds(), questions = QuestionIds();
            for (const auto& k : table->keys()) {
                const QString section = QString::fromStdString(k.section);
                const QString key = QString::fromStdString(k.key);
                if (section == QStringLiteral("Messages") || section == QStringLiteral("AskFor")) {
                    const auto& known = section == QStringLiteral("Messages") ? ids : questions;
                    if (std::find(known.begin(), known.end(), k.key) == known.end())
                        problems << QStringLiteral("%1: [%2] %3 is used by no message").arg(file, section, key);
                    const std::string built = section == QStringLiteral("Messages") ? BuiltInMessage(k.key) : BuiltInQuestion(k.key);
                    if ((built.find("**") == std::string::npos) != (k.value.find("**") == std::string::npos))
                        problems << QStringLiteral("%1: %2 has not the detail marks of the French").arg(file, key);
                    if (k.value.rfind(k.key + " ", 0) != 0)
                        problems << QStringLiteral("%1: %2 does not start with its tag").arg(file, key);
                    continue;
                }
                auto it = french.find(section);
                if (it == french.end() || !it->second.count(key))
                    problems << QStringLiteral("%1: %2.%3 names no control").arg(file, section, key);
            }
            for (const auto& id : ids)
                if (!table->find("Messages", id)) problems << QStringLiteral("%1: no message %2").arg(file, QString::fromStdString(id));
            for (const auto& id : questions)
                if (!table->find("AskFor", id)) problems << QStringLiteral("%1: no question %2").arg(file, QString::fromStdString(id));
        }
        if (problems.size() > 40) problems = problems.mid(0, 40) << QStringLiteral("...");
        QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
    }

    // The main and design windows (and the panels the main window holds)
    // change at once; a window of its own at its next activation.
    void aNewLanguageShowsAtOnceInTheMainAndDesignWindowsOthersOnActivation() {
        test::MainWindowFixture f;
        f.bridge->enter([&] { Click(f.wb, "F_Main", "Toolbar2", button::Performances); });
        QWidget* perf = form(f, "F_GEO_3");
        QVERIFY(perf && perf->isVisible());
        const QString perfFrench = perf->windowTitle();
        auto* perfChart = perf->findChild<ui::ChartPanel*>(QStringLiteral("MSChart1"));
        QVERIFY(perfChart);
        const QString chartFrench = perfChart->chart()->title();
        QVERIFY(!chartFrench.isEmpty());

        chooseLanguage(f, 1);
        const auto english = LanguageTable::load(f.dir.path() / "lang" / "Anglais.lng");
        QCOMPARE(menuTitle(f, "IM_FICH"), fileText(*english, "F_Main", "IM_FICH_Caption"));
        auto* tabs = form(f, "F_3D")->findChild<QTabWidget*>(QStringLiteral("SSTab1"));
        QCOMPARE(tabs->tabText(0), fileText(*english, "F_3D", "SSTab1_TabCaption_0"));
        QCOMPARE(form(f, "F_GEO_SF")->windowTitle(), fileText(*english, "F_GEO_SF", "Caption"));
        QCOMPARE(ui::qs(f.wb.sheet.text(F_3D::Label17)), QStringLiteral("Wing"));
        QCOMPARE(perf->windowTitle(), perfFrench);  // not yet

        QEvent activate(QEvent::WindowActivate);
        QCoreApplication::sendEvent(perf, &activate);
        QCOMPARE(perf->windowTitle(), fileText(*english, "F_GEO_3", "Caption"));
        QVERIFY(perf->windowTitle() != perfFrench);
        // The chart's calculated title, and the next one it is given.
        const QString chartEnglish = fileText(*english, "F_GEO_3", "MSChart1_0_Caption");
        QCOMPARE(perfChart->chart()->title(), chartEnglish);
        f.bridge->enter([&] { Type(f.wb, F_GEO_SF::b7, "900"); PressEnter(f.wb, F_GEO_SF::b7); });
        QCOMPARE(perfChart->chart()->title(), chartEnglish);
        // The series the calculation names take the new words with it.
        QVERIFY(!perfChart->data().series.empty());
        QVERIFY2(perfChart->data().series.front().name.ends_with(" min mass"), perfChart->data().series.front().name.c_str());

        // Back to French: everything the language changed is French again.
        chooseLanguage(f, 0);
        QCoreApplication::sendEvent(perf, &activate);
        QCOMPARE(perf->windowTitle(), perfFrench);
        QCOMPARE(perfChart->chart()->title(), chartFrench);
        QCOMPARE(menuTitle(f, "IM_FICH"), QStringLiteral("&Fichier"));
        QVERIFY(f.messages.empty());
    }

    // A value "a\rb" shows on two lines; a key the file lacks keeps French.
    void aValueWithALineEndShowsOnTwoLines() {
        test::MainWindowFixture f;
        test::writeBytes(f.dir.path() / "lang" / "Anglais.lng", "[F_3D]\r\nPB_FIT_Caption=a\\rb\r\n");
        chooseLanguage(f, 1);
        auto* fit = form(f, "F_3D")->findChild<QAbstractButton*>(QStringLiteral("PB_FIT"));
        QCOMPARE(fit->text(), QStringLiteral("a\nb"));
        QCOMPARE(menuTitle(f, "IM_FICH"), QStringLiteral("&Fichier"));
    }

    // A language file gone, or damaged beyond reading: French, no message.
    void aMissingOrDamagedFileLeavesFrench() {
        test::MainWindowFixture f;
        std::filesystem::remove(f.dir.path() / "lang" / "Espagnol.lng");
        chooseLanguage(f, 2);
        QCOMPARE(menuTitle(f, "IM_FICH"), QStringLiteral("&Fichier"));
        std::string junk(4096, '\0');
        for (size_t i = 0; i < junk.size(); ++i) junk[i] = static_cast<char>(i * 37 % 256);
        test::writeBytes(f.dir.path() / "lang" / "Italien.lng",
                         junk + "\r\n[F_Main\r\nIM_FICH_Caption" + std::string(10 * 1024 * 1024, 'z') + "\r\n");
        chooseLanguage(f, 3);
        QCOMPARE(menuTitle(f, "IM_FICH"), QStringLiteral("&Fichier"));
        QCOMPARE(f.wb.settings.languageCode, std::string("3"));
        QVERIFY(f.messages.empty());
    }
};

QTEST_MAIN(LanguageTest)
#include "language_test.moc"

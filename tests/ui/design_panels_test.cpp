// The real main window, offscreen: open the wing panel, type, press Enter, read the widgets.
#include <QAction>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QtTest>

#include "main_window_fixture.h"

using namespace tarvokin;

class DesignPanelsTest : public QObject {
    Q_OBJECT

    struct Fixture : test::MainWindowFixture {
        QWidget* wing() const { return window->designPanel(button::Wing); }
        template <class T>
        T* find(QWidget* in, const char* name) const {
            T* w = in->findChild<T*>(QString::fromLatin1(name));
            if (!w) qFatal("no control %s", name);
            return w;
        }
        void type(QLineEdit* e, const QString& keys) {
            e->setFocus();
            e->selectAll();
            QTest::keyClicks(e, keys);
        }
    };

private slots:
    void wingButtonShowsThePanelAndHidesTheOthers() {
        Fixture f;
        QAction* wingButton = f.window->toolbarButton(button::Wing);
        QVERIFY(wingButton && wingButton->isEnabled());
        QVERIFY(!f.wing()->isVisible());
        wingButton->trigger();
        QVERIFY(f.wing()->isVisible());
        QCOMPARE(f.wb.sheet.text(F_Main::Toolbar2[button::Wing]), std::string("1"));
        f.window->toolbarButton(button::Stab)->trigger();
        QVERIFY(!f.wing()->isVisible());
        QVERIFY(f.window->designPanel(button::Stab)->isVisible());
        QCOMPARE(f.wb.sheet.text(F_Main::Toolbar2[button::Wing]), std::string("0"));
    }

    void typingASpanAndEnterUpdatesTheResults() {
        Fixture f;
        f.window->toolbarButton(button::Wing)->trigger();
        auto* b7 = f.find<QLineEdit>(f.wing(), "b7");
        auto* j4 = f.find<QLabel>(f.wing(), "j4");
        auto* j6 = f.find<QLabel>(f.wing(), "j6");
        auto* j7 = f.find<QLabel>(f.wing(), "j7");
        const QString areaBefore = j4->text();
        const QString cgBefore = f.find<QLabel>(f.window.get(), "C30")->text();
        f.type(b7, "700");
        QCOMPARE(f.wb.sheet.text(F_GEO_SF::b7), std::string("700"));
        // Grid fields recalculate on Enter, not while typing.
        QCOMPARE(j4->text(), areaBefore);
        QTest::keyClick(b7, Qt::Key_Return);
        QVERIFY(j6->text().startsWith("2300"));
        // Panel 1: 700 x (230 + 205) / 10000 = 30.45; panel 2 unchanged: 15.525.
        QCOMPARE(j4->text(), QString("45.98"));
        QCOMPARE(j7->text(), QString::fromStdString(f.wb.sheet.text(F_GEO_SF::j7)));
        QVERIFY(f.find<QLabel>(f.window.get(), "C30")->text() != cgBefore);
        QVERIFY(f.messages.empty());
        QVERIFY(!b7->hasFocus());  // Enter moves on
    }

    void entryRulesFilterKeys() {
        Fixture f;
        f.window->toolbarButton(button::Wing)->trigger();
        auto* b6 = f.find<QLineEdit>(f.wing(), "b6");
        f.type(b6, "1x2,5,7-");
        // Letters refused, the decimal key enters ".", a second one and a late "-" are refused.
        QCOMPARE(b6->text(), QString("12.57"));
        auto* b8 = f.find<QLineEdit>(f.wing(), "b8");
        f.type(b8, "-15");
        QCOMPARE(b8->text(), QString("-15"));  // sweeps may be negative
        auto* b7 = f.find<QLineEdit>(f.wing(), "b7");
        f.type(b7, "-3");
        QCOMPARE(b7->text(), QString("3"));  // spans may not
    }

    void aZeroDivisorShowsTheNumberedMessageAndNoInfinity() {
        Fixture f;
        f.window->toolbarButton(button::Wing)->trigger();
        for (const char* name : {"b5", "b6"}) {
            auto* e = f.find<QLineEdit>(f.wing(), name);
            f.type(e, "0");
            QTest::keyClick(e, Qt::Key_Return);
        }
        for (const char* name : {"c6", "c7"}) {
            auto* e = f.find<QLineEdit>(f.wing(), name);
            f.type(e, "0");
            QTest::keyClick(e, Qt::Key_Return);
        }
        for (uint16_t i = 0; i < kCellCount; ++i) {
            const std::string& t = f.wb.sheet.text(Cell{i});
            QVERIFY2(t.find("inf") == std::string::npos && t.find("nan") == std::string::npos, cellPath(Cell{i}).c_str());
        }
        for (const std::string& m : f.messages) QVERIFY2(m.rfind("[#7] ", 0) == 0, m.c_str());
    }

    void labelsReallyDrawText() {
        // A missing font draws nothing at all: make sure glyphs reach the pixels.
        Fixture f;
        f.window->toolbarButton(button::Wing)->trigger();
        QLabel* label = f.find<QLabel>(f.wing(), "j6");
        QImage img(label->size(), QImage::Format_ARGB32);
        img.fill(Qt::white);
        label->render(&img);
        int dark = 0;
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x)
                if (qGray(img.pixel(x, y)) < 100) ++dark;
        QVERIFY2(dark > 10, "the result label shows no glyphs");
    }
};

QTEST_MAIN(DesignPanelsTest)
#include "design_panels_test.moc"

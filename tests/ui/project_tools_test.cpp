// The project's tools in the real main window, offscreen: the report's ten
// pictures drawn for real, the wizard's window from its fields to the new
// project, the global chart and the converter as toolbar windows.
#include <QAction>
#include <QComboBox>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>
#include <set>

#include "main_window_fixture.h"
#include "project/report_page.h"
#include "project/ui/tool_windows.h"
#include "views/ui/plan_widget.h"

using namespace tarvokin;

namespace {

// A picture holds a drawing when it has more than a background and a frame.
int colourCount(const QImage& img) {
    std::set<QRgb> colours;
    for (int y = 0; y < img.height(); y += 3)
        for (int x = 0; x < img.width(); x += 3) colours.insert(img.pixel(x, y));
    return static_cast<int>(colours.size());
}

struct Fixture : test::MainWindowFixture {
    std::vector<std::string> notices, opened;
    Fixture() {
        wb.showNotice = [this](const std::string& t) { notices.push_back(t); };
        wb.openDocument = [this](const std::string& p) {
            opened.push_back(p);
            return true;
        };
    }
};

}  // namespace

class ProjectToolsTest : public QObject {
    Q_OBJECT

private slots:
    void reportDrawsTenPicturesAndLeavesTheWindowsAsTheyWere() {
        Fixture f;
        QWidget* chart = f.window->panelWindow(button::View2D);
        QVERIFY(chart && !chart->isVisible());
        QAction* report = f.window->toolbarButton(button::Report);
        QVERIFY(report && report->isEnabled());
        report->trigger();
        QVERIFY2(f.messages.empty(), f.messages.empty() ? "" : f.messages.front().c_str());
        QCOMPARE(f.notices.size(), size_t(1));
        QCOMPARE(f.opened.size(), size_t(1));
        QCOMPARE(f.notices.front(), "[#11] Rapport écrit : " + f.opened.front());
        const std::string model = ReportModelName(f.wb.sheet);
        for (const ReportPicture& p : ReportPictures(model)) {
            QImage img(QString::fromStdString((f.dir.path() / "MODELES" / p.file).string()));
            QVERIFY2(!img.isNull(), p.file.c_str());
            QVERIFY2(colourCount(img) > 4, p.file.c_str());
        }
        QVERIFY(!chart->isVisible());
        QVERIFY(!f.wb.isOpen(button::View2D));
        QVERIFY(!f.wb.isOpen(button::Allongement));
    }

    void wizardMakesTheNewModelFromItsFields() {
        Fixture f;
        ui::WizardDialog wizard(f.wb, *f.bridge, f.window.get());
        wizard.show();
        auto* b21 = wizard.findChild<QComboBox*>("b21");
        QVERIFY(b21 && b21->toolTip().startsWith(QString::fromUtf8("Si stab \"plat\", angle = 180°")));
        QCOMPARE(b21->currentText(), QStringLiteral("180"));
        QCOMPARE(wizard.findChild<QComboBox*>("CB_1")->currentText(), QStringLiteral("SD7080"));
        QVERIFY(!wizard.preview()->plan().emptyDrawing());
        auto* name = wizard.findChild<QLineEdit*>("Text1");
        name->setFocus();
        name->selectAll();
        QTest::keyClicks(name, QStringLiteral("Nouveau"));
        QTest::keyClick(name, Qt::Key_Return);
        auto* span = wizard.findChild<QLineEdit*>("Text19");
        span->selectAll();
        QTest::keyClicks(span, QStringLiteral("800"));
        QTest::keyClick(span, Qt::Key_Return);
        const double before = wizard.preview()->plan().bounds().width();
        wizard.preview()->refresh();
        QVERIFY(wizard.preview()->plan().bounds().width() > before);
        if (qEnvironmentVariableIsSet("TARVOKIN_SHOTS")) wizard.grab().save(qEnvironmentVariable("TARVOKIN_SHOTS") + "/wizard.png");
        wizard.findChild<QPushButton*>("Command1")->click();
        QCOMPARE(wizard.result(), int(QDialog::Accepted));
        QCOMPARE(f.wb.sheet.text(F_3D::T_NOM_Modele), std::string("NOUVEAU"));
        QCOMPARE(f.wb.sheet.text(F_GEO_SF::b7), std::string("800"));
        QVERIFY(!f.wb.history.canUndo());
        QVERIFY(f.window->toolbarButton(button::Wizard)->isEnabled());
        QVERIFY(f.window->toolbarButton(button::New)->isEnabled());
    }

    void chartAndConverterOpenFromTheToolbar() {
        Fixture f;
        f.window->toolbarButton(button::View2D)->trigger();
        QWidget* chart = f.window->panelWindow(button::View2D);
        QVERIFY(chart->isVisible());
        auto* plan = chart->findChild<ui::PlanWidget*>("MSChart1");
        plan->refresh();
        QVERIFY(!plan->plan().emptyDrawing());
        f.window->toolbarButton(button::Converter)->trigger();
        QWidget* conv = f.window->panelWindow(button::Converter);
        QVERIFY(conv->isVisible());
        auto* value = conv->findChild<QLineEdit*>("Text1");
        value->setFocus();
        value->selectAll();
        QTest::keyClicks(value, QStringLiteral("10"));
        QTest::keyClick(value, Qt::Key_Return);
        QCOMPARE(f.wb.sheet.text(F_CONVERT::L_Result), std::string("1"));  // 10 mm = 1 cm
        // The navigator names each window's fields; a double-click asks for the window at its field.
        QString askedForm, askedField;
        ui::NavigatorWindow nav([&](const QString& form, const QString& field) {
            askedForm = form;
            askedField = field;
        });
        const auto found = nav.tree()->findItems(QStringLiteral("b5"), Qt::MatchExactly | Qt::MatchRecursive);
        QVERIFY(!found.isEmpty());
        emit nav.tree()->itemDoubleClicked(found.front(), 0);
        QVERIFY(!askedForm.isEmpty());
        QCOMPARE(askedField, QStringLiteral("b5"));
        if (qEnvironmentVariableIsSet("TARVOKIN_SHOTS")) {
            chart->grab().save(qEnvironmentVariable("TARVOKIN_SHOTS") + "/chart.png");
            conv->grab().save(qEnvironmentVariable("TARVOKIN_SHOTS") + "/convert.png");
            ui::AboutDialog about;
            about.grab().save(qEnvironmentVariable("TARVOKIN_SHOTS") + "/about.png");
            nav.grab().save(qEnvironmentVariable("TARVOKIN_SHOTS") + "/nav.png");
        }
    }
};

QTEST_MAIN(ProjectToolsTest)
#include "project_tools_test.moc"

// SPDX-License-Identifier: MIT
#include "app/testwindow.h"

#include "batch/jobstate.h"

#include <QCheckBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

TestWindow::TestWindow(const QString& projectFile)
    : Window(std::make_unique<MainWindow>(nullptr, projectFile))
{
    Window->resize(1018, 755);
    Window->show();
    QVERIFY(QTest::qWaitForWindowExposed(Window.get()));
}

QWidget* TestWindow::SettingsTab() const
{
    return Window->findChild<QTabWidget*>(QStringLiteral("tabWidgetMain"))->widget(0);
}

void TestWindow::Click(const char* button) const
{
    QVERIFY2(IsEnabled(button), button);
    QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
}

void TestWindow::ClickTab(int index) const
{
    auto* bar = Find<QTabWidget>("tabWidgetMain")->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(index).center());
    QCOMPARE(bar->currentIndex(), index);
}

void TestWindow::SetNumber(const char* field, double value) const
{
    QVERIFY(Find<QAbstractSpinBox>(field)->setProperty("value", value));
    QCOMPARE(Number(field), value);
}

void TestWindow::SetChecked(const char* box, bool isChecked) const
{
    Find<QCheckBox>(box)->setChecked(isChecked);
}

void TestWindow::SetText(const char* lineEdit, const QString& text) const
{
    Find<QLineEdit>(lineEdit)->setText(text);
}

QString TestWindow::Text(const char* lineEdit) const
{
    return Find<QLineEdit>(lineEdit)->text();
}

double TestWindow::Number(const char* field) const
{
    return Find<QAbstractSpinBox>(field)->property("value").toDouble();
}

bool TestWindow::IsChecked(const char* box) const
{
    return Find<QCheckBox>(box)->isChecked();
}

bool TestWindow::IsEnabled(const char* widget) const
{
    return Find<QWidget>(widget)->isEnabled();
}

void TestWindow::Commit() const
{
    // The calculation of the camera path commits first and then, without motion, only logs.
    Window->ProcessUpdate(JobPathReady);
    Click("pushButtonCalculateTrack");
}

void TestWindow::SetPaths(const QString& video, const QString& directory) const
{
    const QDir dir(directory);
    SetText("lineEditSourceVideo", video);
    SetText("lineEditTrackingPathFile", dir.filePath(QStringLiteral("Tracking.dat")));
    SetText("lineEditStabilizeFile", dir.filePath(QStringLiteral("Stabilize.dat")));
    SetText("lineEditExportVideo", dir.filePath(QStringLiteral("Export.mp4")));
}

QString TestWindow::Word() const
{
    return Window->windowTitle().section(QLatin1Char(' '), 0, 0);
}

QString TestWindow::LastAction() const
{
    return Find<QLabel>("labelLog")->text();
}

QStringList TestWindow::Log() const
{
    const QString text = Find<QPlainTextEdit>("plainTextEdit")->toPlainText();
    return text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
}

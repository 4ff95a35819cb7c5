// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/jsonmodule.h"
#include "device/usbidentifiers.h"
#include "dialoganswer.h"
#include "pages/addperipheraldialog.h"
#include "pages/peripheralspage.h"
#include "testdevice.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QJsonArray>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

namespace {

const QString section = "redirection settings";
const QString database = "/var/lib/usbutils/usb.ids";

QJsonObject device(const char *vid, const char *pid, const char *redirection)
{
    return {{"vid", vid}, {"pid", pid}, {"redirection", redirection}};
}

} // namespace

/// The peripherals page over a bus of descriptor files. libusb takes a file that it has read for the same
/// device as long as the file is there, so each test plugs what it needs into numbers of its own.
class PeripheralsPageTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void listsWhatIsPluggedIn();
    void storesWhatIsChosen();
    void addsAndRemovesByHand();
    void readsWhatIsStored();
    void namesFromAnOversizedDatabase();

private:
    void fill(const QJsonObject &redirection = {});
    void apply();
    QStringList rows() const;
    QJsonObject stored() const { return m_device->document().value(section).toObject(); }
    template <typename Widget>
    Widget *part(const char *name) const
    {
        return m_page->findChild<Widget *>(QLatin1String(name));
    }

    std::unique_ptr<TestDevice> m_device;
    std::unique_ptr<JsonModule> m_document;
    std::unique_ptr<PeripheralsPage> m_page;
};

void PeripheralsPageTest::init()
{
    m_device = std::make_unique<TestDevice>();
    m_document = std::make_unique<JsonModule>("config.json", true);
}

void PeripheralsPageTest::cleanup()
{
    m_page.reset();
    m_document.reset();
    m_device.reset();
}

void PeripheralsPageTest::fill(const QJsonObject &redirection)
{
    m_device->setDocument({{section, redirection}, {"server groups", QJsonArray()}});
    m_document->readContent();
    m_page = std::make_unique<PeripheralsPage>(*m_document);
    m_page->fill();
    m_page->show();
    QVERIFY(!m_page->isChanged());
}

void PeripheralsPageTest::apply()
{
    QVERIFY(m_page->isChanged());
    QVERIFY(m_page->apply());
    QVERIFY(m_device->document().contains("server groups"));
}

/// "NAME|VID:PID|REDIRECTION" of each row, as the view shows it, with a star where it is not plugged in.
QStringList PeripheralsPageTest::rows() const
{
    const QAbstractItemModel *model = part<QTreeView>("peripheralView")->model();
    QStringList result;
    for (int row = 0; row < model->rowCount(); ++row) {
        QStringList texts;
        for (int column = 0; column < model->columnCount(); ++column)
            texts += model->index(row, column).data().toString();
        const bool italic = model->index(row, 0).data(Qt::FontRole).value<QFont>().italic();
        result += texts.join(QLatin1Char('|')) + (italic ? "*" : "");
    }
    return result;
}

void PeripheralsPageTest::listsWhatIsPluggedIn()
{
    const QString bus = "/dev/bus/usb/001/";
    const QByteArray whole = m_device->read(bus + "004");
    m_device->write(bus + "020", whole.left(9));
    m_device->write(bus + "021", QByteArray());
    m_device->write(bus + "022", QByteArray(40, '\0'));
    QFile::link("/nowhere", m_device->path(bus + "023"));
    QByteArray unknown = whole.left(20); // its configuration is cut, and of no interest
    unknown[11] = '\x7f';
    m_device->write(bus + "024", unknown);
    fill();
    QStringList expected = {"Harbour Works Ward Keyboard|f0a1:0101|Native", "USB DEVICE|f0a1:7f01|Native",
                            "Fieldnote Audio Desk Headset|f0b2:0210|Native",
                            "Pebble Storage Flash Drive 32 GB|f0c3:0301|Native",
                            "Cardinal Readers Smart Card Reader|f0d4:0401|Native"};
    QCOMPARE(rows(), expected);

    QFile::remove(m_device->path(bus + "024"));
    expected[1] += QLatin1Char('*');
    part<QPushButton>("refreshButton")->click();
    expected.append(expected.takeAt(1));
    QCOMPARE(rows(), expected);

    QFile::remove(m_device->path(database));
    fill();
    for (const QString &row : rows())
        QVERIFY2(row.startsWith("USB DEVICE|"), qPrintable(row));
    QVERIFY(QProcess::execute("rm", {"-r", m_device->path("/dev")}) == 0);
    fill();
    QCOMPARE(rows(), QStringList());
    QVERIFY(!part<QPushButton>("removeButton")->isEnabled());
}

void PeripheralsPageTest::storesWhatIsChosen()
{
    fill();
    auto *view = part<QTreeView>("peripheralView");
    view->setCurrentIndex(view->model()->index(1, 0));
    QVERIFY(!m_page->isChanged());
    part<QComboBox>("redirectionComboBox")->setCurrentText("Redirect");
    view->setCurrentIndex(view->model()->index(2, 0));
    QCOMPARE(part<QComboBox>("redirectionComboBox")->currentText(), "Native");
    QTest::keyClick(view, Qt::Key_Space);
    QTest::keyClick(view, Qt::Key_Delete); // plugged in, so it stays
    part<QComboBox>("printersComboBox")->setCurrentIndex(0);
    apply();
    QCOMPARE(stored().value("custom devices").toArray(),
             (QJsonArray{device("f0a1", "0101", "Native"), device("f0b2", "0210", "Redirect"),
                         device("f0c3", "0301", "Redirect"), device("f0d4", "0401", "Native")}));
    QCOMPARE(stored().value("printers").toString(), "native");
    QCOMPARE(stored().size(), 9);
    const QStringList before = rows();
    m_page->fill();
    QCOMPARE(rows(), before);
}

void PeripheralsPageTest::addsAndRemovesByHand()
{
    fill();
    DialogAnswer answer(true);
    QTimer::singleShot(0, this, [] {
        auto *dialog = qobject_cast<AddPeripheralDialog *>(QApplication::activeModalWidget());
        for (const char *text : {"", "03ba-04ce", "3ba:4ce", "03ba:04ce ", "03ba:04ceg", "0424:EC00",
                                 "F0A1:0101", "03BA:04CE"}) {
            dialog->findChild<QLineEdit *>()->setText(QLatin1String(text));
            dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
        }
    });
    part<QPushButton>("addButton")->click();
    QStringList expected;
    for (int i = 0; i < 5; ++i)
        expected += "Wrong vid:pid format. (e.g. 03ba:04ce)";
    expected << "This device cannot be added (USB hub, ethernet, dual screen)"
             << "Device already present";
    QCOMPARE(answer.messages, expected);
    QCOMPARE(answer.titles.count("Error"), expected.size());
    QCOMPARE(rows().last(), "USB DEVICE|03ba:04ce|Native*");
    part<QComboBox>("redirectionComboBox")->setCurrentIndex(1);
    apply();
    QCOMPARE(stored().value("custom devices").toArray().last().toObject(),
             device("03ba", "04ce", "Redirect"));

    QTest::keyClick(part<QTreeView>("peripheralView"), Qt::Key_Delete);
    QCOMPARE(rows().size(), 4);
    apply();
    QCOMPARE(stored().value("custom devices").toArray().size(), 4);
}

void PeripheralsPageTest::readsWhatIsStored()
{
    const char *const redirect = "Redirect";
    fill({{"custom devices",
           QJsonArray{device("F0A1", "0101", redirect), device("F0A1", "0102", redirect),
                      device("1d6b", "0002", redirect), device("f0a1", "1", redirect), 5,
                      device("03ba", "04ce", "perhaps")}},
          {"general policy", "native"},
          {"mass storage", "off"},
          {"audio", 5},
          {"of tomorrow", true}});
    QCOMPARE(rows().size(), 6);
    QCOMPARE(rows().first(), "Harbour Works Ward Keyboard|f0a1:0101|Redirect");
    QCOMPARE(rows().at(4), "Harbour Works Ward Mouse|f0a1:0102|Redirect*");
    QCOMPARE(rows().at(5), "USB DEVICE|03ba:04ce|Native*");
    QVERIFY(!part<QComboBox>("audioComboBox")->isEnabled());
    part<QComboBox>("generalPolicyComboBox")->setCurrentIndex(0);
    QVERIFY(part<QComboBox>("audioComboBox")->isEnabled());
    apply();
    QCOMPARE(stored().value("general policy").toString(), "default");
    QCOMPARE(stored().value("mass storage").toString(), "off");
    QVERIFY(stored().value("of tomorrow").toBool());
}

void PeripheralsPageTest::namesFromAnOversizedDatabase()
{
    QByteArray text = "f0a1  Harbour Works\n\t0101  Ward Keyboard\n" + QByteArray(800 * 1024, 'x');
    text += "\nf0b2  Fieldnote Audio\n\t0210  Desk Headset\nabcd  Another\n"
        + QByteArray(static_cast<int>(UsbIdentifiers::sizeLimit), 'x')
        + "\nf0c3  Pebble Storage\n\t0301  Far Drive";
    m_device->write(database, text);
    fill();
    QCOMPARE(rows().mid(0, 3),
             (QStringList{"Harbour Works Ward Keyboard|f0a1:0101|Native",
                          "Fieldnote Audio Desk Headset|f0b2:0210|Native", "USB DEVICE|f0c3:0301|Native"}));
}

QTEST_MAIN(PeripheralsPageTest)
#include "peripheralspagetest.moc"

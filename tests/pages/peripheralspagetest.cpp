// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/usbidentifiers.h"
#include "dialoganswer.h"
#include "openedpage.h"
#include "pages/addperipheraldialog.h"
#include "pages/peripheralspage.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QString section = "redirection settings";
const QString database = "/var/lib/usbutils/usb.ids";

QJsonObject device(const char *vid, const char *pid, const char *redirection)
{
    return {{"vid", vid}, {"pid", pid}, {"redirection", redirection}};
}

struct Opened : OpenedPage<PeripheralsPage>
{
    explicit Opened(const QJsonObject &redirection = {})
        : OpenedPage({{section, redirection}})
    { }

    /// "NAME|VID:PID|REDIRECTION" of each row, as the view shows it, with a star where it is not plugged in.
    QStringList rows() const
    {
        const QAbstractItemModel *model = part<QTreeView>(page, "peripheralView")->model();
        QStringList result;
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList texts;
            for (int column = 0; column < model->columnCount(); ++column)
                texts += model->index(row, column).data().toString();
            const bool italic = model->index(row, 0).data(Qt::FontRole).value<QFont>().italic();
            result += texts.join('|') + (italic ? "*" : "");
        }
        return result;
    }

    /// Applies the page: what is stored then.
    QJsonObject applied()
    {
        const bool done = page.isChanged() && page.apply() && !page.isChanged();
        return done ? device.stored({section}).toObject() : QJsonObject();
    }
};

} // namespace

/// The peripherals page over a bus of descriptor files. libusb takes a file that it has read for the same
/// device as long as the file is there, so each test plugs what it needs into numbers of its own.
class PeripheralsPageTest : public QObject
{
    Q_OBJECT

private slots:
    void listsWhatIsPluggedIn()
    {
        const QString bus = "/dev/bus/usb/001/";
        Opened opened;
        const TestDevice &device = opened.device;
        const QByteArray whole = device.read(bus + "004");
        device.write(bus + "020", whole.left(9));
        device.write(bus + "021", QByteArray());
        device.write(bus + "022", QByteArray(40, '\0'));
        QFile::link("/nowhere", device.path(bus + "023"));
        QByteArray unknown = whole.left(20); // its configuration is cut, and of no interest
        unknown[11] = '\x7f';
        device.write(bus + "024", unknown);
        press(opened.page, "refreshButton");
        const QStringList expected
            = {"Harbour Works Ward Keyboard|f0a1:0101|Native", "USB DEVICE|f0a1:7f01|Native",
               "Fieldnote Audio Desk Headset|f0b2:0210|Native",
               "Pebble Storage Flash Drive 32 GB|f0c3:0301|Native",
               "Cardinal Readers Smart Card Reader|f0d4:0401|Native"};
        QCOMPARE(opened.rows(), expected);

        QDir(device.path("/dev")).removeRecursively();
        opened.page.fill();
        QCOMPARE(opened.rows(), QStringList());
        QVERIFY(!part(opened.page, "removeButton")->isEnabled());
    }

    void addsAndRemovesByHand()
    {
        Opened opened;
        const DialogAnswer answer(true);
        QTimer::singleShot(0, this, [] {
            auto *dialog = qobject_cast<AddPeripheralDialog *>(QApplication::activeModalWidget());
            for (const char *text : {"", "03ba-04ce", "3ba:4ce", "03ba:04ce ", "03ba:04ceg", "0424:EC00",
                                     "F0A1:0101", "03BA:04CE"}) {
                dialog->findChild<QLineEdit *>()->setText(text);
                dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
            }
        });
        press(opened.page, "addButton");
        QCOMPARE(answer.messages.count("Wrong vid:pid format. (e.g. 03ba:04ce)"), 5);
        QCOMPARE(answer.messages.mid(5),
                 QStringList({"This device cannot be added (USB hub, ethernet, dual screen)",
                              "Device already present"}));
        QCOMPARE(opened.rows().last(), "USB DEVICE|03ba:04ce|Native*");
        part<QComboBox>(opened.page, "redirectionComboBox")->setCurrentIndex(1);
        QCOMPARE(opened.applied()["custom devices"].toArray().last().toObject(),
                 device("03ba", "04ce", "Redirect"));
        QTest::keyClick(part(opened.page, "peripheralView"), Qt::Key_Delete);
        QCOMPARE(opened.applied()["custom devices"].toArray().size(), 4);
    }

    void readsWhatIsStored()
    {
        Opened opened({{"custom devices",
                        QJsonArray{device("F0A1", "0101", "Redirect"), device("F0A1", "0102", "Redirect"),
                                   device("1d6b", "0002", "Redirect"), device("f0a1", "1", "Redirect"), 5,
                                   device("03ba", "04ce", "perhaps")}},
                       {"general policy", "native"},
                       {"of tomorrow", true}});
        const QStringList rows = opened.rows();
        QCOMPARE(rows.first(), "Harbour Works Ward Keyboard|f0a1:0101|Redirect");
        QCOMPARE(
            rows.mid(4),
            QStringList({"Harbour Works Ward Mouse|f0a1:0102|Redirect*", "USB DEVICE|03ba:04ce|Native*"}));
        part<QComboBox>(opened.page, "generalPolicyComboBox")->setCurrentIndex(0);
        QVERIFY(opened.applied()["of tomorrow"].toBool());
    }

    void namesFromAnOversizedDatabase()
    {
        Opened opened;
        opened.device.write(database,
                            "f0a1  Harbour Works\n\t0101  Ward Keyboard\n" + QByteArray(800 * 1024, 'x')
                                + "\nf0b2  Fieldnote Audio\n\t0210  Desk Headset\nabcd  Another\n"
                                + QByteArray(static_cast<int>(UsbIdentifiers::sizeLimit), 'x')
                                + "\nf0c3  Pebble Storage\n\t0301  Far Drive");
        opened.page.fill();
        QCOMPARE(
            opened.rows().mid(0, 3),
            QStringList({"Harbour Works Ward Keyboard|f0a1:0101|Native",
                         "Fieldnote Audio Desk Headset|f0b2:0210|Native", "USB DEVICE|f0c3:0301|Native"}));
    }
};

QTEST_MAIN(PeripheralsPageTest)
#include "peripheralspagetest.moc"

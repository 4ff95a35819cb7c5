// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/connectionpage.h"

#include "config/keys.h"
#include "models/item.h"

#include "ui_connectionpage.h"

#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include <algorithm>

namespace {

QStringList namesOf(const QJsonArray &groups)
{
    QStringList names;
    for (const QJsonValue &group : groups) {
        const QString name = group.toObject().value(Key::groupName).toString();
        if (!name.isEmpty())
            names += name;
    }
    return names;
}

/// Keeps the stored text, blanks included, unless the user edited it.
void insertIfEdited(QJsonObject &object, QLatin1String key, const QLineEdit *editor)
{
    const QJsonValue stored = object.value(key);
    if (!stored.isString() || stored.toString() != editor->text())
        object.insert(key, editor->text().trimmed());
}

bool hasBlanks(const QString &address)
{
    const QString text = address.trimmed();
    return std::any_of(text.begin(), text.end(), [](QChar character) { return character.isSpace(); });
}

} // namespace

ConnectionPage::ConnectionPage(JsonModule &configuration, const GroupsSource &groups, const UserSource &user,
                               QWidget *parent)
    : SettingsPage(configuration, tr("Connection"), QStringLiteral(":/images/page_connection.png"), parent)
    , m_ui(std::make_unique<Ui::ConnectionPage>())
    , m_currentGroups(groups)
    , m_logonUser(user)
{
    if (!m_currentGroups)
        m_currentGroups = [this] {
            return root().value(Key::serverGroups).toArray();
        };
    if (!m_logonUser)
        m_logonUser = [this] {
            return section(Key::autologon).value(Key::username).toString();
        };
    m_ui->setupUi(this);
    setUpLists();
    connectEditors();
    updateDependents();
}

ConnectionPage::~ConnectionPage() = default;

void ConnectionPage::setUpLists()
{
    for (QComboBox *box : {m_ui->autoConnectGroupComboBox, m_ui->defaultProtocolComboBox}) {
        box->setItemDelegate(new QStyledItemDelegate(box)); // lets the style sheet style the rows
        useUniformRows(*box);
    }
}

void ConnectionPage::connectEditors()
{
    watchEditors();
    for (QAbstractButton *button : {static_cast<QAbstractButton *>(m_ui->autoConnectCheckBox),
                                    static_cast<QAbstractButton *>(m_ui->autoConnectGroupRadioButton),
                                    static_cast<QAbstractButton *>(m_ui->autoLogonCheckBox)})
        connect(button, &QAbstractButton::toggled, this, &ConnectionPage::updateDependents);
    connect(m_ui->autoConnectGroupComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ConnectionPage::announceGroup);
}

void ConnectionPage::updateDependents()
{
    const bool toGroup = m_ui->autoConnectGroupRadioButton->isChecked();
    m_ui->autoConnectWidget->setEnabled(m_ui->autoConnectCheckBox->isChecked());
    for (QWidget *part : {static_cast<QWidget *>(m_ui->autoConnectServerNameLabel),
                          static_cast<QWidget *>(m_ui->autoConnectServerNameLineEdit),
                          static_cast<QWidget *>(m_ui->autoConnectServerAddressLabel),
                          static_cast<QWidget *>(m_ui->autoConnectServerAddressLineEdit)})
        part->setEnabled(!toGroup);
    m_ui->autoConnectGroupLabel->setEnabled(toGroup);
    m_ui->autoConnectGroupComboBox->setEnabled(toGroup);
    m_ui->autoLogonWidget->setEnabled(m_ui->autoLogonCheckBox->isChecked());
    announceGroup();
}

QString ConnectionPage::autoConnectGroup() const
{
    const bool toGroup
        = m_ui->autoConnectCheckBox->isChecked() && m_ui->autoConnectGroupRadioButton->isChecked();
    return toGroup ? m_ui->autoConnectGroupComboBox->currentData().toString() : QString();
}

/// Ignores the intermediate states while the page is filled.
void ConnectionPage::announceGroup()
{
    const QString name = autoConnectGroup();
    if (isFilling() || name == m_announcedGroup)
        return;
    m_announcedGroup = name;
    emit autoConnectGroupChanged(name);
}

void ConnectionPage::setGroups(const QJsonArray &groups)
{
    const QStringList names = namesOf(groups);
    if (names == m_groupNames)
        return;
    m_groupNames = names;
    showGroups(m_ui->autoConnectGroupComboBox->currentData().toString());
}

void ConnectionPage::showGroups(const QString &chosen)
{
    QComboBox *box = m_ui->autoConnectGroupComboBox;
    const QSignalBlocker quiet(box); // the selected group does not change
    box->clear();
    if (!chosen.isEmpty() && !m_groupNames.contains(chosen))
        box->addItem(tr("%1 (not found)").arg(chosen.simplified()), chosen);
    for (const QString &name : qAsConst(m_groupNames))
        box->addItem(name.simplified(), name);
    box->setCurrentIndex(chosen.isEmpty() ? -1 : box->findData(chosen));
}

void ConnectionPage::load(const QJsonObject &root)
{
    const QJsonObject connection = root.value(Key::connection).toObject();
    m_groupNames = namesOf(m_currentGroups());
    loadCorvid(connection.value(Key::corvidConnection).toObject());
    loadSolva(connection.value(Key::solvaConnection).toObject());
    loadRdp(connection.value(Key::rdpConnection).toObject());
    updateDependents();
    m_announcedGroup = autoConnectGroup();
    emit autoConnectGroupChanged(m_announcedGroup);
}

void ConnectionPage::loadCorvid(const QJsonObject &corvid)
{
    const QJsonObject autoconnect = corvid.value(Key::autoconnect).toObject();
    const QJsonObject server = autoconnect.value(Key::server).toObject();
    const bool toGroup = autoconnect.value(Key::type).toString() == ItemType::group;
    m_ui->allowManualAddressCheckBox->setChecked(corvid.value(Key::allowManualAddress).toBool());
    m_ui->showAutodetectedCheckBox->setChecked(corvid.value(Key::showAutodetected).toBool());
    m_ui->autoConnectCheckBox->setChecked(autoconnect.value(Key::enabled).toBool());
    m_ui->autoConnectGroupRadioButton->setChecked(toGroup);
    m_ui->autoConnectServerRadioButton->setChecked(!toGroup);
    m_ui->autoConnectServerNameLineEdit->setText(server.value(Key::serverName).toString());
    m_ui->autoConnectServerAddressLineEdit->setText(server.value(Key::serverAddress).toString());
    showGroups(autoconnect.value(Key::group).toString());
}

void ConnectionPage::loadSolva(const QJsonObject &solva)
{
    const QJsonObject autoconnect = solva.value(Key::autoconnect).toObject();
    QComboBox *protocols = m_ui->defaultProtocolComboBox;
    m_ui->brokerAddressLineEdit->setText(solva.value(Key::brokerAddress).toString());
    m_ui->allowCustomBrokersCheckBox->setChecked(solva.value(Key::allowCustomBrokers).toBool());
    const QString protocol = solva.value(Key::defaultProtocol).toString();
    // A protocol that this page does not offer stays what it is until another is chosen.
    if (!protocol.isEmpty() && protocols->findText(protocol) < 0)
        protocols->addItem(protocol);
    protocols->setCurrentIndex(qMax(0, protocols->findText(protocol)));
    m_ui->autoLogonCheckBox->setChecked(autoconnect.value(Key::enabled).toBool());
    m_ui->desktopLineEdit->setText(autoconnect.value(Key::desktop).toString());
}

void ConnectionPage::loadRdp(const QJsonObject &rdp)
{
    m_ui->rdpServerAddressLineEdit->setText(rdp.value(Key::rdpServerAddress).toString());
    m_ui->allowCustomRdpServersCheckBox->setChecked(rdp.value(Key::allowCustomRdpServers).toBool());
}

QString ConnectionPage::refusal() const
{
    QString message = addressRefusal();
    if (message.isEmpty())
        message = autoConnectRefusal();
    return message.isEmpty() ? autoLogonRefusal() : message;
}

QString ConnectionPage::addressRefusal() const
{
    for (QLineEdit *address : {m_ui->autoConnectServerAddressLineEdit, m_ui->brokerAddressLineEdit,
                               m_ui->rdpServerAddressLineEdit}) {
        if (hasBlanks(address->text()) && !isUnusedAndUntouched(address)) {
            focusField(address);
            return tr("An address must not contain blanks: %1").arg(address->text());
        }
    }
    return QString();
}

bool ConnectionPage::connectsToServer() const
{
    return m_ui->autoConnectCheckBox->isChecked() && m_ui->autoConnectServerRadioButton->isChecked();
}

/// A disabled field cannot be corrected, so its stored address does not block "Apply".
bool ConnectionPage::isUnusedAndUntouched(const QLineEdit *address) const
{
    if (address != m_ui->autoConnectServerAddressLineEdit || connectsToServer())
        return false;
    const QJsonObject corvid = section(Key::connection).value(Key::corvidConnection).toObject();
    const QJsonObject server = corvid.value(Key::autoconnect).toObject().value(Key::server).toObject();
    return address->text() == server.value(Key::serverAddress).toString();
}

QString ConnectionPage::autoConnectRefusal() const
{
    if (!m_ui->autoConnectCheckBox->isChecked())
        return QString();
    if (connectsToServer()) {
        if (!m_ui->autoConnectServerAddressLineEdit->text().trimmed().isEmpty())
            return QString();
        focusField(m_ui->autoConnectServerAddressLineEdit);
        return tr("Automatic connection needs the address of a server.");
    }
    const QString name = autoConnectGroup();
    const QJsonArray groups = m_currentGroups();
    const auto found = std::find_if(groups.begin(), groups.end(), [&name](const QJsonValue &group) {
        return group.toObject().value(Key::groupName).toString() == name;
    });
    if (found != groups.end() && !name.isEmpty()
        && !(*found).toObject().value(Key::servers).toArray().isEmpty())
        return QString();
    focusField(m_ui->autoConnectGroupComboBox);
    if (name.isEmpty())
        return tr("Automatic connection needs a group.");
    return found == groups.end() ? tr("Automatic connection: group %1 does not exist.").arg(name)
                                 : tr("Automatic connection: group %1 has no servers.").arg(name);
}

QString ConnectionPage::autoLogonRefusal() const
{
    if (!m_ui->autoLogonCheckBox->isChecked())
        return QString();
    if (m_ui->brokerAddressLineEdit->text().trimmed().isEmpty()) {
        focusField(m_ui->brokerAddressLineEdit);
        return tr("Automatic log-on needs the address of a SOLVA broker.");
    }
    if (!m_logonUser().trimmed().isEmpty())
        return QString();
    focusField(m_ui->autoLogonCheckBox);
    return tr("Automatic log-on needs a user name. Enter it on the kiosk mode page.");
}

void ConnectionPage::save(QJsonObject &root)
{
    QJsonObject connection = root.value(Key::connection).toObject();
    connection.insert(Key::corvidConnection, savedCorvid(connection.value(Key::corvidConnection).toObject()));
    connection.insert(Key::solvaConnection, savedSolva(connection.value(Key::solvaConnection).toObject()));
    connection.insert(Key::rdpConnection, savedRdp(connection.value(Key::rdpConnection).toObject()));
    root.insert(Key::connection, connection);
}

QJsonObject ConnectionPage::savedCorvid(QJsonObject corvid) const
{
    QJsonObject autoconnect = corvid.value(Key::autoconnect).toObject();
    QJsonObject server = autoconnect.value(Key::server).toObject();
    const bool toGroup = m_ui->autoConnectGroupRadioButton->isChecked();
    insertIfEdited(server, Key::serverName, m_ui->autoConnectServerNameLineEdit);
    insertIfEdited(server, Key::serverAddress, m_ui->autoConnectServerAddressLineEdit);
    autoconnect.insert(Key::enabled, m_ui->autoConnectCheckBox->isChecked());
    autoconnect.insert(Key::type, toGroup ? ItemType::group : ItemType::server);
    autoconnect.insert(Key::server, server);
    autoconnect.insert(Key::group, m_ui->autoConnectGroupComboBox->currentData().toString());
    corvid.insert(Key::allowManualAddress, m_ui->allowManualAddressCheckBox->isChecked());
    corvid.insert(Key::showAutodetected, m_ui->showAutodetectedCheckBox->isChecked());
    corvid.insert(Key::autoconnect, autoconnect);
    return corvid;
}

QJsonObject ConnectionPage::savedSolva(QJsonObject solva) const
{
    QJsonObject autoconnect = solva.value(Key::autoconnect).toObject();
    autoconnect.insert(Key::enabled, m_ui->autoLogonCheckBox->isChecked());
    insertIfEdited(autoconnect, Key::desktop, m_ui->desktopLineEdit);
    insertIfEdited(solva, Key::brokerAddress, m_ui->brokerAddressLineEdit);
    solva.insert(Key::allowCustomBrokers, m_ui->allowCustomBrokersCheckBox->isChecked());
    solva.insert(Key::defaultProtocol, m_ui->defaultProtocolComboBox->currentText());
    solva.insert(Key::autoconnect, autoconnect);
    return solva;
}

QJsonObject ConnectionPage::savedRdp(QJsonObject rdp) const
{
    insertIfEdited(rdp, Key::rdpServerAddress, m_ui->rdpServerAddressLineEdit);
    rdp.insert(Key::allowCustomRdpServers, m_ui->allowCustomRdpServersCheckBox->isChecked());
    return rdp;
}

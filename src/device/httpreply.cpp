// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/httpreply.h"

#include "device/httpaccess.h"
#include "device/httprules.h"

#include <QAuthenticator>
#include <QSslSocket>

#include <cstring>
#include <limits>

namespace {

constexpr qint64 socketBufferSize = 256 * 1024;
constexpr int progressMs = 100;
constexpr int reasonLimit = 200;

} // namespace

HttpReply::HttpReply(HttpAccess &access, QNetworkAccessManager::Operation operation,
                     const QNetworkRequest &request, const QByteArray &body)
    : QNetworkReply(&access)
    , m_access(access)
    , m_sent(body)
    , m_tls(request.sslConfiguration())
{
    setRequest(request);
    setOperation(operation);
    setUrl(request.url());
    QNetworkReply::open(QIODevice::ReadOnly);
    QMetaObject::invokeMethod(this, &HttpReply::connectToServer, Qt::QueuedConnection);
}

HttpReply::~HttpReply() = default;

bool HttpReply::isSupported(QNetworkAccessManager::Operation operation, const QUrl &url)
{
    return !Http::verb(operation).isEmpty() && Http::isWeb(url);
}

void HttpReply::connectToServer()
{
    if (m_stage == Stage::Finished)
        return;
    if (++m_requests > requestsLimit)
        return fail(ProtocolFailure, tr("Too many challenges"));
    m_proxy = m_access.proxyFor(url());
    m_throughProxy = !Http::isEncrypted(url()) && m_proxy.type() == QNetworkProxy::HttpProxy;
    m_socket = new QSslSocket(this);
    m_socket->setReadBufferSize(socketBufferSize);
    m_socket->setProxy(m_throughProxy ? QNetworkProxy(QNetworkProxy::NoProxy) : m_proxy);
    m_socket->setSslConfiguration(m_tls);
    watchSocket();
    const QString host = m_throughProxy ? m_proxy.hostName() : url().host();
    const auto port = static_cast<quint16>(m_throughProxy ? m_proxy.port() : Http::portOf(url()));
    if (Http::isEncrypted(url()))
        m_socket->connectToHostEncrypted(host, port);
    else
        m_socket->connectToHost(host, port);
}

void HttpReply::watchSocket()
{
    if (Http::isEncrypted(url()))
        connect(m_socket, &QSslSocket::encrypted, this, &HttpReply::sendRequest);
    else
        connect(m_socket, &QSslSocket::connected, this, &HttpReply::sendRequest);
    connect(m_socket, &QSslSocket::readyRead, this, &HttpReply::receive);
    connect(m_socket, &QSslSocket::errorOccurred, this, &HttpReply::handleSocketError);
    connect(m_socket, QOverload<const QList<QSslError> &>::of(&QSslSocket::sslErrors), this,
            &HttpReply::sslErrors);
    connect(m_socket, &QSslSocket::proxyAuthenticationRequired, &m_access,
            &QNetworkAccessManager::proxyAuthenticationRequired);
}

QUrl HttpReply::origin() const
{
    return url().adjusted(QUrl::RemoveUserInfo | QUrl::RemoveFragment);
}

/// A proxy gets the whole URL.
QByteArray HttpReply::target() const
{
    if (m_throughProxy)
        return origin().toEncoded();
    QByteArray path = url().path(QUrl::FullyEncoded).toLatin1();
    if (!path.startsWith('/'))
        path.prepend('/');
    return url().hasQuery() ? path + '?' + url().query(QUrl::FullyEncoded).toLatin1() : path;
}

void HttpReply::sendRequest()
{
    QByteArray head = Http::verb(operation()) + ' ' + target()
        + " HTTP/1.1\r\nHost: " + origin().authority(QUrl::FullyEncoded).toLatin1()
        + "\r\nConnection: close\r\nUser-Agent: KT964\r\n";
    const QNetworkRequest asked = request();
    for (const QByteArray &name : asked.rawHeaderList())
        head += name + ": " + asked.rawHeader(name) + "\r\n";
    if (!m_authorization.isEmpty())
        head += "Authorization: " + m_authorization + "\r\n";
    if (m_throughProxy && !m_proxyAuthorization.isEmpty())
        head += "Proxy-Authorization: " + m_proxyAuthorization + "\r\n";
    if (operation() == QNetworkAccessManager::PutOperation
        || operation() == QNetworkAccessManager::PostOperation)
        head += "Content-Length: " + QByteArray::number(m_sent.size()) + "\r\n";
    m_stage = Stage::Head;
    m_socket->write(head + "\r\n" + m_sent);
}

void HttpReply::receive()
{
    const QPointer<HttpReply> self(this);
    if (m_stage == Stage::Head)
        receiveHead();
    if (self && m_stage == Stage::Body)
        receiveBody();
    if (self && m_socket && m_closed && m_socket->bytesAvailable() == 0)
        handleEndOfConnection();
}

void HttpReply::receiveHead()
{
    while (m_stage == Stage::Head && m_socket->canReadLine()) {
        const QByteArray line = m_socket->readLine(headLimit + 1);
        m_headBytes += line.size();
        m_headLines += line.trimmed();
        if (m_headBytes > headLimit || m_headLines.size() > headLinesLimit)
            break;
        if (!m_headLines.last().isEmpty())
            continue;
        const auto head = HttpHead::parse(m_headLines);
        m_headLines.clear();
        if (!head)
            return fail(ProtocolFailure, tr("The reply is not HTTP"));
        if (head->status >= 200)
            return handleHead(*head);
    }
    if (m_headBytes + m_socket->bytesAvailable() > headLimit || m_headLines.size() > headLinesLimit)
        fail(ProtocolFailure, tr("The reply's head is too long"));
}

void HttpReply::handleHead(const HttpHead &head)
{
    if (head.status == 401)
        return handleChallenge(head);
    if (head.status == 407 && m_throughProxy)
        return handleProxyChallenge();
    if (handleRedirection(head))
        return;
    setAttribute(QNetworkRequest::HttpStatusCodeAttribute, head.status);
    setAttribute(QNetworkRequest::HttpReasonPhraseAttribute, head.reason);
    if (head.status < 400)
        return startBody(head);
    const QString reason = QString::fromLatin1(head.reason.left(reasonLimit));
    fail(Http::errorOf(head.status),
         tr("Error transferring %1 - server replied: %2").arg(origin().toString(), reason));
}

/// The credentials in the URL come first, then those of the manager's owner.
void HttpReply::handleChallenge(const HttpHead &head)
{
    const QPointer<HttpReply> self(this);
    QAuthenticator authenticator;
    if (m_authorization.isEmpty() && !url().userName().isEmpty()) {
        authenticator.setUser(url().userName(QUrl::FullyDecoded));
        authenticator.setPassword(url().password(QUrl::FullyDecoded));
    } else if (Http::isBasicOffered(head)) {
        setError(AuthenticationRequiredError, tr("Host requires authentication"));
        emit m_access.authenticationRequired(this, &authenticator);
    }
    if (!self || m_stage == Stage::Finished)
        return;
    setError(NoError, QString());
    if (authenticator.isNull())
        return fail(Http::errorOf(head.status), tr("Host requires authentication"));
    m_authorization = Http::basic(authenticator.user(), authenticator.password());
    restart();
}

void HttpReply::handleProxyChallenge()
{
    const QPointer<HttpReply> self(this);
    QAuthenticator authenticator;
    emit m_access.proxyAuthenticationRequired(m_proxy, &authenticator);
    if (!self || m_stage == Stage::Finished)
        return;
    const QByteArray offer = Http::basic(authenticator.user(), authenticator.password());
    if (authenticator.isNull() || offer == m_proxyAuthorization)
        return fail(ProxyAuthenticationRequiredError, tr("Proxy requires authentication"));
    m_proxyAuthorization = offer;
    restart();
}

/// Returns whether the head was dealt with.
bool HttpReply::handleRedirection(const HttpHead &head)
{
    const int policy = request().attribute(QNetworkRequest::RedirectPolicyAttribute).toInt();
    const QByteArray location = head.value("location");
    const bool reads = operation() == QNetworkAccessManager::GetOperation
        || operation() == QNetworkAccessManager::HeadOperation;
    if (head.status / 100 != 3 || location.isEmpty() || !reads
        || policy == QNetworkRequest::ManualRedirectPolicy)
        return false;
    const QUrl next = url().resolved(QUrl::fromEncoded(location));
    const bool same = Http::isSameOrigin(url(), next);
    if (m_redirections++ >= request().maximumRedirectsAllowed()) {
        fail(TooManyRedirectsError, tr("Too many redirects"));
    } else if (!Http::isWeb(next)) {
        fail(ProtocolUnknownError, tr("Redirected to an unknown protocol"));
    } else if ((Http::isEncrypted(url()) && !Http::isEncrypted(next))
               || (policy == QNetworkRequest::SameOriginRedirectPolicy && !same)) {
        fail(InsecureRedirectError, tr("Insecure redirect"));
    } else {
        if (!same)
            m_authorization.clear();
        setUrl(next);
        restart();
    }
    return true;
}

void HttpReply::startBody(const HttpHead &head)
{
    m_body = HttpBody(head, operation() == QNetworkAccessManager::HeadOperation);
    m_stage = Stage::Body;
    for (const auto &header : head.headers)
        setRawHeader(header.first, header.second);
    m_lastReport.start();
    emit metaDataChanged();
}

/// What the buffer has no room for stays in the socket, so that the server waits.
void HttpReply::receiveBody()
{
    const QPointer<HttpReply> self(this);
    const qint64 held = m_buffer.size() - m_bufferStart;
    const qint64 room = readBufferSize() > 0 ? qMax<qint64>(0, readBufferSize() - held)
                                             : std::numeric_limits<int>::max() - held;
    const QByteArray bytes = m_body.take(m_socket->read(qMin(room, socketBufferSize)));
    if (!bytes.isEmpty()) {
        m_buffer = m_buffer.mid(m_bufferStart) + bytes;
        m_bufferStart = 0;
        m_received += bytes.size();
        if (m_lastReport.hasExpired(progressMs))
            reportProgress();
        if (self)
            emit readyRead();
    }
    if (!self || m_stage != Stage::Body)
        return;
    if (m_body.state() == HttpBody::State::Complete)
        finish();
    else if (m_body.state() == HttpBody::State::Broken)
        fail(ProtocolFailure, tr("The reply is not HTTP"));
}

qint64 HttpReply::readData(char *data, qint64 longest)
{
    const qint64 held = m_buffer.size() - m_bufferStart;
    if (held == 0 && m_stage == Stage::Finished)
        return -1;
    const qint64 count = qMin(longest, held);
    std::memcpy(data, m_buffer.constData() + m_bufferStart, static_cast<size_t>(count));
    m_bufferStart += static_cast<int>(count);
    if (count == held) {
        m_buffer.clear();
        m_bufferStart = 0;
    }
    if (count > 0 && m_socket && m_socket->bytesAvailable() > 0)
        QMetaObject::invokeMethod(this, &HttpReply::receive, Qt::QueuedConnection);
    return count;
}

qint64 HttpReply::bytesAvailable() const
{
    return m_buffer.size() - m_bufferStart + QNetworkReply::bytesAvailable();
}

void HttpReply::handleSocketError()
{
    m_closed = m_socket->error() == QAbstractSocket::RemoteHostClosedError;
    if (m_closed)
        receive();
    else
        fail(Http::errorOf(m_socket->error()), m_socket->errorString());
}

void HttpReply::handleEndOfConnection()
{
    if (m_stage == Stage::Body && m_body.endsWithConnection())
        finish();
    else
        fail(RemoteHostClosedError, tr("Connection closed"));
}

void HttpReply::reportProgress()
{
    m_lastReport.start();
    emit downloadProgress(m_received, m_body.length());
}

/// Sends the request again, over a new connection: the rest of the reply is of no use.
void HttpReply::restart()
{
    dropSocket();
    m_stage = Stage::Connecting;
    m_headBytes = 0;
    m_closed = false;
    QMetaObject::invokeMethod(this, &HttpReply::connectToServer, Qt::QueuedConnection);
}

void HttpReply::dropSocket()
{
    if (!m_socket)
        return;
    m_socket->disconnect(this);
    m_socket->disconnect(&m_access);
    m_socket->deleteLater();
    m_socket.clear();
}

void HttpReply::fail(NetworkError error, const QString &text)
{
    m_stage = Stage::Finished;
    dropSocket();
    setError(error, text);
    setFinished(true);
    const QPointer<HttpReply> self(this);
    emit errorOccurred(error);
    if (self)
        emit finished();
}

void HttpReply::finish()
{
    m_stage = Stage::Finished;
    dropSocket();
    setFinished(true);
    const QPointer<HttpReply> self(this);
    reportProgress();
    if (self)
        emit readChannelFinished();
    if (self)
        emit finished();
}

void HttpReply::abort()
{
    if (m_stage != Stage::Finished)
        fail(OperationCanceledError, tr("Operation canceled"));
}

void HttpReply::close()
{
    abort();
    QNetworkReply::close();
}

void HttpReply::ignoreSslErrors()
{
    if (m_socket)
        m_socket->ignoreSslErrors();
}

void HttpReply::ignoreSslErrorsImplementation(const QList<QSslError> &errors)
{
    if (m_socket)
        m_socket->ignoreSslErrors(errors);
}

void HttpReply::sslConfigurationImplementation(QSslConfiguration &configuration) const
{
    configuration = m_socket ? m_socket->sslConfiguration() : m_tls;
}

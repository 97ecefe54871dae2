// The agent of the tests. It does what the file "agent.script" in the folder of its one argument says, a line each:
//   request FILE   read the request           say TEXT      one word into the mailbox
//   data FILE      becomes the calendar's file part TEXT    a word without its end
//   wait MS        do nothing                 flood N       so many words of progress
//   die            end by a signal         hear FILE     what the mailbox holds

#include <QCoreApplication>
#include <QFile>
#include <QLocalSocket>
#include <QMap>
#include <QThread>

#include <csignal>

namespace {

QMap<QString, QString> ReadRequest(const QString& path) {
  QMap<QString, QString> request;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return request;
  const QStringList lines = QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
  for (const QString& line : lines) request[line.section(u'=', 0, 0).trimmed()] = line.section(u'=', 1).trimmed();
  return request;
}

struct Agent {
  QMap<QString, QString> request;
  QLocalSocket box;

  void Say(const QByteArray& bytes) {
    if (box.state() != QLocalSocket::ConnectedState) {
      box.connectToServer(request[QStringLiteral("CallBack")]);
      box.waitForConnected();
    }
    box.write(bytes);
    while (box.bytesToWrite() > 0 && box.waitForBytesWritten()) {
    }
  }

  void Hear(const QString& path) {
    Say({});
    while (!box.canReadLine() && box.waitForReadyRead()) {
    }
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) file.write(box.readLine());
  }

  void Do(const QString& verb, const QString& what) {
    if (verb == QStringLiteral("request")) request = ReadRequest(what);
    if (verb == QStringLiteral("say")) Say(what.toUtf8() + '\n');
    if (verb == QStringLiteral("part")) Say(what.toUtf8());
    if (verb == QStringLiteral("wait")) QThread::msleep(what.toULong());
    if (verb == QStringLiteral("data")) QFile::copy(what, request[QStringLiteral("GgFileName")]);
    if (verb == QStringLiteral("hear")) Hear(what);
    if (verb == QStringLiteral("die")) std::raise(SIGKILL);
    if (verb == QStringLiteral("flood")) {
      for (int step = 1; step <= what.toInt(); ++step) Say("%" + QByteArray::number(step) + ';' + what.toUtf8() + '\n');
    }
  }
};

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QFile script(QString::fromLocal8Bit(argc > 1 ? argv[1] : "") + QStringLiteral("agent.script"));
  if (!script.open(QIODevice::ReadOnly)) return 1;
  Agent agent;
  while (!script.atEnd()) {
    const QString line = QString::fromUtf8(script.readLine()).trimmed();
    agent.Do(line.section(u' ', 0, 0), line.section(u' ', 1));
  }
  return 0;
}

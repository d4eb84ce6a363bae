#pragma once

#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

/// The payment portal as a test meets it, on loopback: its start page and the form of the challan.
class PortalDouble : public QTcpServer
{
public:
    enum class Manner { Usual, Slow, NeverAnswers, WithoutForm, CannotFind };

    Manner startPage = Manner::Usual;
    Manner challanPage = Manner::Usual;

    PortalDouble()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, &PortalDouble::serve);
    }
    [[nodiscard]] QString address() const { return QStringLiteral("http://127.0.0.1:%1").arg(serverPort()); }

private:
    void serve()
    {
        QTcpSocket *caller = nextPendingConnection();
        connect(caller, &QTcpSocket::disconnected, caller, &QObject::deleteLater);
        connect(caller, &QTcpSocket::readyRead, caller, [this, caller] {
            const QByteArray path = caller->readAll().split(' ').value(1);
            if (path == "/etaxnew/tdsnontds.jsp")
                answer(caller, startPage, start());
            else if (path.startsWith("/etaxnew/PopServlet"))
                answer(caller, challanPage, challan());
            else
                answer(caller, Manner::Usual, {});
        });
    }
    static void answer(QTcpSocket *caller, Manner manner, const QByteArray &page)
    {
        if (manner == Manner::NeverAnswers)
            return;
        const QByteArray body = manner == Manner::CannotFind ? "<title>Cannot find server</title>" : page;
        const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nConnection: close\r\nContent-Length: " +
                                QByteArray::number(body.size()) + "\r\n\r\n";
        QTimer::singleShot(manner == Manner::Slow ? 1500 : 0, caller, [caller, head, body] {
            caller->write(head + body);
            caller->disconnectFromHost();
        });
    }
    static QByteArray start()
    {
        return "<title>e-Tax Payment System</title><a id='283' href='/etaxnew/PopServlet?rKey=7'>ITNS 283</a>";
    }
    [[nodiscard]] QByteArray challan() const
    {
        if (challanPage == Manner::WithoutForm)
            return "<title>CHALLAN NO/ITNO 283</title><p>Closed for the night</p>";
        QByteArray lines;
        for (int i = 1; i <= 5; ++i)
            lines += "<input name='Add_Line" + QByteArray::number(i) + "'>";
        return "<title>CHALLAN NO/ITNO 283</title><form name='tax283'><input name='PAN'><input name='Name'>" + lines +
               "<input type='radio' name='MajorHead' value='0020'><input type='radio' name='MajorHead' value='0026' "
               "onclick='this.form.Add_Line1.value=this.form.Name.value=String()'>"
               "<select name='AssessYear'><option>--</option><option>2007-08</option><option>2008-09</option></select>"
               "<select name='Add_State'><option>--</option><option>Delhi</option><option>Maharashtra</option></select>"
               "<input name='Add_PIN'><input name='Add_EMAIL'><input name='Add_MOBILE' value='x'>"
               "<input type='radio' name='MinorHead' value='100'><input type='radio' name='MinorHead' value='300'>"
               "<input type='radio' name='MinorHead' value='400'><input type='button' name='back'></form>";
    }
};

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Pages.h"

#include <QRegularExpression>

namespace Pages {

QString escaped(const QString& text)
{
    return text.toHtmlEscaped();
}

QString page(const QString& title, const QString& body, const QString& backcolor)
{
    static const QRegularExpression hex(QStringLiteral("^[0-9A-Fa-f]{6}$"));
    const QString background = hex.match(backcolor).hasMatch() ? u'#' + backcolor : QStringLiteral("#f4f6f9");
    return QStringLiteral("<!DOCTYPE html>\n<html lang=\"de\"><head><meta charset=\"utf-8\"><title>") + escaped(title)
        + QStringLiteral("</title><style>"
                         "body{font-family:'DejaVu Sans',Arial,sans-serif;margin:0;color:#1d2733;background:")
        + background
        + QStringLiteral(";}"
                         "header{background:#1f5f9e;color:#fff;padding:12px 18px;font-size:18px;font-weight:bold}"
                         "main{padding:14px 18px;font-size:14px;line-height:1.45}"
                         "table{border-collapse:collapse;width:100%;background:#fff}"
                         "td,th{border-bottom:1px solid #dde3ea;padding:6px 8px;text-align:left}"
                         "th{background:#e8eef5}a{color:#1f5f9e}"
                         ".close{display:inline-block;margin-top:14px;padding:5px 12px;border:1px solid #1f5f9e;"
                         "border-radius:4px;text-decoration:none}"
                         ".notice{background:#e6f4e6;border:1px solid #8c8;padding:6px 10px;margin-bottom:10px}"
                         ".error{background:#fbe9e9;border:1px solid #d88;padding:6px 10px}"
                         "</style></head><body><header>")
        + escaped(title) + QStringLiteral("</header><main>") + body + QStringLiteral("</main></body></html>\n");
}

QString loginError()
{
    return page(QStringLiteral("Anmeldung fehlgeschlagen"),
                QStringLiteral("<p class=\"error\">Für diese Kombination aus eMail und Kennwort ist kein Konto "
                               "vorhanden. Bitte überprüfen Sie Ihre Zugangsdaten in den Einstellungen.</p>"
                               "<a class=\"close\" href=\"close://\">Schließen</a>"));
}

QString phonebook(const Account& account)
{
    QString rows;
    for (const PhonebookEntry& e : account.phonebook) {
        // An entry without a number gets a link without "@", which the client can't take over.
        QString link = QStringLiteral("telefon://") + QString(e.name).replace(u' ', QStringLiteral("%20"));
        if (!e.number.isEmpty())
            link += u'@' + e.number;
        rows += QStringLiteral("<tr><td><a href=\"") + escaped(link) + QStringLiteral("\">") + escaped(e.name)
            + QStringLiteral("</a></td><td>") + escaped(e.number) + QStringLiteral("</td></tr>");
    }
    return page(QStringLiteral("Telefonbuch"),
                QStringLiteral("<p>Klicken Sie auf einen Namen, um ihn als Empfänger zu übernehmen.</p>"
                               "<table><tr><th>Name</th><th>Rufnummer</th></tr>")
                    + rows + QStringLiteral("</table><a class=\"close\" href=\"close://\">Telefonbuch schließen</a>"));
}

QString groups(const Account& account)
{
    const auto link = [](const QString& href, const QString& text) -> QString {
        return QStringLiteral("<a href=\"") + escaped(href) + QStringLiteral("\">") + escaped(text)
            + QStringLiteral("</a>");
    };
    QString rows;
    for (const WebGroup& g : account.groups) {
        rows += QStringLiteral("<tr><td>") + link(QStringLiteral("http://gruppe//") + g.file, g.name)
            + QStringLiteral("</td><td>") + QString::number(g.lines.size()) + QStringLiteral("</td></tr>");
    }
    // The other forms of the address that the client traps; only "http://gruppe//" leads to the
    // data.
    QString others;
    if (!account.groups.isEmpty()) {
        const WebGroup& first = account.groups.first();
        others = QStringLiteral("<p>Andere Linkformen: ")
            + link(QStringLiteral("gruppe://") + first.file, first.name + QStringLiteral(" (gruppe://)"))
            + QStringLiteral(", ")
            + link(QStringLiteral("http://gruppe://") + first.file, first.name + QStringLiteral(" (http://gruppe://)"))
            + QStringLiteral("</p>");
    }
    return page(QStringLiteral("Gruppen"),
                QStringLiteral("<p>Wählen Sie eine Gruppe für den Massenversand.</p>"
                               "<table><tr><th>Gruppe</th><th>Einträge</th></tr>")
                    + rows + QStringLiteral("</table>") + others
                    + QStringLiteral("<a class=\"close\" href=\"close://\">Abbrechen</a>"));
}

QString shop(const Account& account, const QString& query, const QString& notice, const QString& backcolor)
{
    QString offers;
    for (const int credits : { 100, 500, 1000 }) {
        offers += QStringLiteral("<tr><td>") + QString::number(credits) + QStringLiteral(" Credits</td><td>")
            + QString::number(credits / 10) + QStringLiteral(",00 EUR</td><td><a href=\"/sms/buyCredits.php?")
            + escaped(query) + QStringLiteral("&amp;paket=") + QString::number(credits)
            + QStringLiteral("\">Bestellen</a></td></tr>");
    }
    const QString shown
        = notice.isEmpty() ? QString() : QStringLiteral("<p class=\"notice\">") + notice + QStringLiteral("</p>");
    return page(QStringLiteral("Credits kaufen"),
                shown + QStringLiteral("<p>Ihr Guthaben: <b>") + QString::number(account.credits)
                    + QStringLiteral(" Credits</b></p><table><tr><th>Paket</th><th>Preis</th><th></th></tr>") + offers
                    + QStringLiteral("</table><a class=\"close\" href=\"close://\">Fertig</a>"),
                backcolor);
}

QString jobs(const Account& account, const QString& query, const QString& notice, const QString& backcolor)
{
    QString rows;
    for (const ScheduledJob& j : account.jobs) {
        rows += QStringLiteral("<tr><td>") + escaped(j.start) + QStringLiteral("</td><td><code>") + escaped(j.cron)
            + QStringLiteral("</code></td><td>") + escaped(j.end) + QStringLiteral("</td><td>") + escaped(j.recipient)
            + QStringLiteral("</td><td>") + escaped(j.text)
            + QStringLiteral("</td><td><a href=\"/terminversand/deleteSMS.php?") + escaped(query)
            + QStringLiteral("&amp;delete=") + QString::number(j.id) + QStringLiteral("\">Löschen</a></td></tr>");
    }
    if (account.jobs.isEmpty())
        rows = QStringLiteral("<tr><td colspan=\"6\">Es sind keine Aufträge vorhanden.</td></tr>");
    const QString shown
        = notice.isEmpty() ? QString() : QStringLiteral("<p class=\"notice\">") + notice + QStringLiteral("</p>");
    return page(QStringLiteral("Aktive SMS-Aufträge"),
                shown
                    + QStringLiteral("<table><tr><th>Start</th><th>Wiederholung</th><th>Ende</th><th>Empfänger</th>"
                                     "<th>Text</th><th></th></tr>")
                    + rows + QStringLiteral("</table>"),
                backcolor);
}

QString terms()
{
    return page(QStringLiteral("Allgemeine Geschäftsbedingungen"),
                QStringLiteral("<p>§ 1 Der Dienst übermittelt Kurznachrichten (SMS) im Auftrag des Kunden.</p>"
                               "<p>§ 2 Abgerechnet wird in Credits. Eine SMS kostet 10 Credits, mit eigener "
                               "Absenderkennung 14 Credits.</p><p>§ 3 Der Kunde versendet keine unerwünschten "
                               "Nachrichten.</p>"));
}

QString news()
{
    return page(QStringLiteral("Neuigkeiten"),
                QStringLiteral("<p><b>Terminversand:</b> Planen Sie Ihre SMS jetzt auch als Serie.</p>"
                               "<p><b>Gruppen:</b> Öffnen Sie Ihre Gruppen direkt aus dem Internet-Telefonbuch.</p>"
                               "<a class=\"close\" href=\"close://\">Schließen</a>"));
}

QString help()
{
    return page(QStringLiteral("Online Hilfe"),
                QStringLiteral("<h3>SMS versenden</h3><p>Wählen Sie eine Vorwahl, geben Sie die Rufnummer ohne "
                               "Vorwahl ein, schreiben Sie Ihre Nachricht und klicken Sie auf „Senden“.</p>"
                               "<h3>MultiSMS</h3><p>Mit den Platzhaltern %name%, %frei1% und %frei2% erhält jeder "
                               "Empfänger seine eigene Nachricht.</p><h3>Terminversand</h3><p>Legen Sie Datum, "
                               "Uhrzeit und Wiederholung fest; der Server verschickt die SMS zum gewählten "
                               "Zeitpunkt.</p>"));
}

QString home()
{
    return page(QStringLiteral("Quellbote"),
                QStringLiteral("<p>Willkommen beim SMS-Dienst. Melden Sie sich mit Ihrer eMail-Adresse an, um Ihr "
                               "Konto, Ihr Telefonbuch und Ihre Aufträge zu verwalten.</p>"));
}

QString notFound(const QString& path)
{
    return page(QStringLiteral("Seite nicht gefunden"),
                QStringLiteral("<p class=\"error\">Die Seite ") + escaped(path)
                    + QStringLiteral(" wurde nicht gefunden.</p>"));
}

QString garbage()
{
    return QStringLiteral("<html><head><title>500 Internal Server Error</title></head><body>"
                          "<h1>Internal Server Error</h1><p>The server encountered an internal error.</p>"
                          "</body></html>\n");
}

} // namespace Pages

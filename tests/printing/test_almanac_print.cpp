// The almanac's printed pages: an opening printed to PDF and read back with pdftotext,
// every hourly GHA and Dec of the Sun, the Moon and Aries and every star's SHA and Dec
// compared with the page's own unrounded values to the printed unit; each item of "Print
// Book" drawn to PNG (<build>/book_pages/) for looking at.
#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <cmath>
#include <map>

#include "almanac/Almanac_Book.h"
#include "ephemeris/Units.h"
#include "printing/cPrint_Gateway.h"
#include "settings/M_Formatting.h"

namespace kelmoran {
namespace {

QString Tool(const QString& tool, const QStringList& args) {
    QProcess p;
    p.start(tool, args);
    p.waitForFinished(120000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

QString Pdf_Path(const QString& name) {
    QDir(KELMORAN_BINARY_DIR).mkpath("book_pages");
    return QDir(KELMORAN_BINARY_DIR).filePath("book_pages/" + name);
}

// The angles of a line of text in the order they stand, in minutes of arc. A declination
// names its hemisphere only where the page prints it; below, the column's last name holds,
// kept in `signs` by column (S negative).
std::vector<double> Angles(const QString& line, std::map<int, double>& signs) {
    static const QRegularExpression angle(R"((\d+)° (\d\d)'\.(\d)( [NS])?)");
    std::vector<double> out;
    for (auto it = angle.globalMatch(line); it.hasNext();) {
        const auto m = it.next();
        double& sign = signs.try_emplace(static_cast<int>(out.size()), 1.0).first->second;
        if (!m.captured(4).isEmpty()) sign = m.captured(4) == " S" ? -1.0 : 1.0;
        out.push_back(sign * (m.captured(1).toInt() * 60.0 + m.captured(2).toInt() +
                              m.captured(3).toInt() / 10.0));
    }
    return out;
}

// The printed value `printed` against the page's value `radians`: within half the last
// unit (0'.05) of the rounded figure, so off by no more than one unit of the print.
void Expect_Printed(double printed, double radians, bool signedDec, const char* what, int row) {
    double exact = radians * kArcminPerRadian;
    if (!signedDec) exact = std::fmod(exact + 21600.0, 21600.0);
    double diff = std::fabs(printed - exact);
    if (!signedDec) diff = std::min(diff, 21600.0 - diff);
    EXPECT_LE(diff, 0.05 + 1e-6) << what << " row " << row << ": printed " << printed;
}

TEST(AlmanacPrint, AnOpeningReadBackAgreesWithThePageToThePrintedUnit) {
    const double jd = 9828.5;  // 2026 November 29, 0h UT
    MySystemTime first;
    first.wYear = 2026, first.wMonth = 11, first.wDay = 29, first.wDayOfWeek = 1;
    const PagesPrint print = Almanac_Opening_Print(jd, first, 30);
    const QString path = Pdf_Path("opening");
    cPrint_Gateway gateway;
    ASSERT_TRUE(gateway.Save_PDF(print, (path + ".pdf").toStdString()));
    EXPECT_EQ(gateway.Pages, 2);
    Tool("pdftoppm", {"-r", "60", "-png", path + ".pdf", path});
    const QStringList pages = Tool("pdftotext", {"-layout", path + ".pdf", "-"}).split('\f');
    ASSERT_GE(pages.size(), 2);

    cAlmanac a;
    a.MyJD(jd);
    static const QRegularExpression hourRow(R"(^\s*(?:\S+\s+)?(\d\d)\s+\d+° )");
    int leftRows = 0, rightRows = 0, stars = 0;
    for (int side = 0; side < 2; ++side) {
        int hour = -1;
        std::map<int, double> signs;
        for (const QString& line : pages[side].split('\n')) {
            const auto m = hourRow.match(line);
            if (!m.hasMatch()) continue;
            // The hours run 00 .. 23 three times down the page.
            const int h = m.captured(1).toInt();
            hour = (hour < 0) ? h : hour + 1;
            ASSERT_EQ(hour % 24, h) << line.toStdString();
            const std::vector<double> v = Angles(line, signs);
            if (side == 0) {
                // Aries, then GHA and Dec of four planets, then (while they last) a star.
                ASSERT_GE(v.size(), 9u) << line.toStdString();
                Expect_Printed(v[0], a.Frame(hour).GAST, false, "Aries", hour);
                if (v.size() == 11) {
                    Expect_Printed(v[9], a.Star_SHA(hour), false, "star SHA", hour);
                    Expect_Printed(v[10], a.Star_Dec(hour), true, "star Dec", hour);
                    ++stars;
                }
                ++leftRows;
            } else {
                ASSERT_GE(v.size(), 4u) << line.toStdString();
                Expect_Printed(v[0], a.Sun_Tabulated_GHA(hour), false, "Sun GHA", hour);
                Expect_Printed(v[1], a.Sun_Place(hour).Dec, true, "Sun Dec", hour);
                Expect_Printed(v[2], a.Moon_Place(hour).GHA, false, "Moon GHA", hour);
                Expect_Printed(v[3], a.Moon_Place(hour).Dec, true, "Moon Dec", hour);
                ++rightRows;
            }
        }
    }
    EXPECT_EQ(leftRows, 72);
    EXPECT_EQ(rightRows, 72);
    EXPECT_EQ(stars, static_cast<int>(a.MyStarCol().size()));
}

// One page of every item of the book, and the complete almanac's title and contents, drawn
// to PNG; the documents carry the item's name.
TEST(AlmanacPrint, EveryBookItemPrints) {
    for (const char* item : {"Dip etc", "Almanac", "Increments and Corrections", "Refraction",
                             "Moon Corrections", "Monthly Stars", "Complete Almanac"}) {
        PagesPrint print = Book_Item(item, 9828.5, 3, 2026, false);
        ASSERT_GT(print.Count, 0) << item;
        const int32_t all = print.Count;
        print.Count = std::min<int32_t>(print.Count, 2);
        QString name = QString(item).toLower().replace(' ', '_');
        const QString path = Pdf_Path(name);
        cPrint_Gateway gateway;
        ASSERT_TRUE(gateway.Save_PDF(print, (path + ".pdf").toStdString())) << item;
        EXPECT_EQ(gateway.Pages, print.Count) << item;
        Tool("pdftoppm", {"-r", "50", "-png", path + ".pdf", path});
        const QString info = Tool("pdfinfo", {path + ".pdf"});
        EXPECT_TRUE(info.contains(QString("Kelmoran ~ ") + item)) << item;
        if (QString(item) == "Complete Almanac") {
            // Title, contents, dip, 122 openings, stars, increments, refraction, Moon.
            EXPECT_EQ(all, 2 + 1 + 244 + 2 + 60 + 2 + 2);
            EXPECT_TRUE(Tool("pdftotext", {path + ".pdf", "-"}).contains("Increments and Corrections"));
        }
    }
}

}  // namespace
}  // namespace kelmoran

#include "printing/cPrint_Generic.h"

#include <QFontMetrics>
#include <QPagedPaintDevice>
#include <QPen>
#include <algorithm>
#include <cmath>

#include "shell/M_Kelmoran.h"
#include "shell/SplashScreen.h"

namespace kelmoran {

namespace {

// Gap between a column's widest text and its edges, and the inset of the text, in screen
// pixels.
constexpr float kColumnGap = 12.0f;
constexpr float kTextInset = 4.0f;
const QColor kRuleGrey(150, 150, 150);

int Alignment_Of(int32_t align) {
    if (align == 1) return Qt::AlignRight;
    if (align == 2) return Qt::AlignHCenter;
    return Qt::AlignLeft;
}

bool Is_Greek(QChar c) { return c.unicode() >= 0x0370 && c.unicode() <= 0x03FF; }

int Scaled(float pixels, float scale) {
    return std::max(static_cast<int>(std::lround(pixels * scale)), 1);
}

}  // namespace

void cPrint_Generic::Initialize_Dimensions(const GridPrint& print) {
    const QFontMetrics std(Fonts.pStdFont);
    const QFontMetrics hdr(Fonts.pHdrFont);
    const PrintMeasure measure = [&](const std::string& text, bool bold) {
        return static_cast<int32_t>((bold ? hdr : std).horizontalAdvance(QString::fromStdString(text)));
    };
    fit_ = Fit_Columns(print, measure, Area.ScaleX, Area.pWidth,
                       Scaled(kColumnGap, Area.ScaleX));
}

void cPrint_Generic::Draw_Title(QPainter& p, const std::vector<std::string>& titles) const {
    int32_t y = My_rTitle.top();
    for (size_t i = 0; i < titles.size(); ++i) {
        const QFont& font = i == 0 ? Fonts.pTitleFont : Fonts.pHdrFont;
        const int h = QFontMetrics(font).height() * 3 / 2;
        p.setFont(font);
        p.setPen(Qt::black);
        p.drawText(QRect(My_rTitle.left(), y, My_rTitle.width(), h), Qt::AlignCenter,
                   QString::fromStdString(titles[i]));
        y += h;
    }
}

int32_t cPrint_Generic::Draw_Headings(QPainter& p, const GridPrint& print, int32_t top) const {
    const int32_t left = Area.Left + std::max((Area.pWidth - fit_.Total) / 2, 0);
    p.setFont(Fonts.pHdrFont);
    p.setPen(Qt::black);
    int32_t x = left;
    for (size_t c = 0; c < print.Columns.size(); ++c) {
        const int32_t w = fit_.Widths[c];
        p.drawText(QRect(x, top, w, headingHeight_), Qt::AlignCenter | Qt::TextSingleLine,
                   QString::fromStdString(print.Columns[c].Heading));
        x += w;
    }
    QPen rule(Qt::black);
    rule.setWidth(std::max(Scaled(1.5f, Area.ScaleY), 2));
    p.setPen(rule);
    const int32_t y = top + headingHeight_ - rule.width();
    p.drawLine(left, y, left + fit_.Total, y);
    return top + headingHeight_;
}

void cPrint_Generic::Draw_Cell(QPainter& p, const GridPrint& print, size_t column,
                               const QRect& cell, const std::string& text, bool secondLine,
                               uint32_t ink) const {
    if (text.empty()) return;
    const QString s = QString::fromStdString(text);
    const int flags = Alignment_Of(print.Columns[column].Align) | Qt::AlignVCenter |
                      Qt::TextSingleLine;
    const int inset = Scaled(kTextInset, Area.ScaleX * fit_.FontFactor);
    const QRect inner = cell.adjusted(inset, 0, -inset, 0);
    p.setPen(QColor::fromRgb(ink));
    // A designation begins with its Greek letter, drawn in the Greek font.
    if (print.Owner == screen_key::AltAz && print.Columns[column].Column == 0 && !s.isEmpty() &&
        Is_Greek(s[0])) {
        const QFontMetrics gm(Fonts.pGreekFont), sm(Fonts.pStdFont);
        const QString letter = s.left(1), rest = s.mid(1);
        const int width = gm.horizontalAdvance(letter) + sm.horizontalAdvance(rest);
        int x = inner.left();
        if (flags & Qt::AlignHCenter) x = inner.left() + (inner.width() - width) / 2;
        if (flags & Qt::AlignRight) x = inner.right() - width;
        p.setFont(Fonts.pGreekFont);
        p.drawText(QRect(x, inner.top(), width, inner.height()), Qt::AlignLeft | Qt::AlignVCenter,
                   letter);
        p.setFont(Fonts.pStdFont);
        p.drawText(QRect(x + gm.horizontalAdvance(letter), inner.top(), width, inner.height()),
                   Qt::AlignLeft | Qt::AlignVCenter, rest);
        return;
    }
    // On Moon Phases a time marked "*" is an eclipse: in bold.
    if (print.Owner == screen_key::Lunations && s.contains('*')) {
        p.setFont(Fonts.pHdrFont);
    } else if (secondLine && print.Columns[column].Align == 0) {
        QFont remark = Fonts.pStdFont;
        remark.setItalic(true);
        p.setFont(remark);
    } else {
        p.setFont(Fonts.pStdFont);
    }
    p.drawText(inner, flags, s);
}

void cPrint_Generic::Draw_Page_Number(QPainter& p, int32_t page, int32_t pages) const {
    p.setFont(Fonts.pSmallFont);
    p.setPen(Qt::black);
    const int h = QFontMetrics(Fonts.pSmallFont).height();
    p.drawText(QRect(Area.Left, Area.Top + Area.pHeight - h, Area.pWidth, h),
               Qt::AlignRight | Qt::AlignBottom,
               QString("Page %1 of %2").arg(page + 1).arg(pages));
}

void cPrint_Generic::Print_Generic_Data(QPainter& p, QPagedPaintDevice& device,
                                        const GridPrint& print) {
    if (fit_.Widths.size() != print.Columns.size()) Initialize_Dimensions(print);
    const PrintFonts base = Fonts;
    // The fonts fall with the table's scale; the title keeps its size.
    Fonts.pStdFont.setPixelSize(std::max(static_cast<int>(base.pStdFont.pixelSize() * fit_.FontFactor), 1));
    Fonts.pHdrFont.setPixelSize(std::max(static_cast<int>(base.pHdrFont.pixelSize() * fit_.FontFactor), 1));
    Fonts.pGreekFont.setPixelSize(std::max(static_cast<int>(base.pGreekFont.pixelSize() * fit_.FontFactor), 1));
    lineHeight_ = QFontMetrics(Fonts.pStdFont).height() * 4 / 3;
    headingHeight_ = QFontMetrics(Fonts.pHdrFont).height() * 8 / 5;
    const int32_t footer = QFontMetrics(Fonts.pSmallFont).height() * 2;
    const int32_t body =
        Area.pHeight - My_rTitle.height() - headingHeight_ - footer;
    const std::vector<PageSpan> pages =
        Paginate(static_cast<int32_t>(print.Cells.size()), print.LinesPerRow, lineHeight_, body);
    Pages = static_cast<int32_t>(pages.size());
    const int32_t left = Area.Left + std::max((Area.pWidth - fit_.Total) / 2, 0);
    QPen rowRule(kRuleGrey);
    rowRule.setWidth(std::max(Scaled(0.5f, Area.ScaleY), 1));

    for (size_t page = 0; page < pages.size(); ++page) {
        if (page > 0) device.newPage();
        Draw_Title(p, print.Titles);
        int32_t y = Draw_Headings(p, print, My_rTitle.bottom() + 1);
        for (int32_t line = pages[page].First; line <= pages[page].Last; ++line) {
            const auto& cells = print.Cells[static_cast<size_t>(line)];
            const bool second = print.LinesPerRow > 1 && line % print.LinesPerRow != 0;
            const auto l = static_cast<size_t>(line);
            const uint32_t ink = l < print.Inks.size() ? print.Inks[l] : 0;
            int32_t x = left;
            for (size_t c = 0; c < print.Columns.size() && c < cells.size(); ++c) {
                Draw_Cell(p, print, c, QRect(x, y, fit_.Widths[c], lineHeight_), cells[c], second,
                          ink);
                x += fit_.Widths[c];
            }
            y += lineHeight_;
            // A fine rule under each entry.
            if ((line + 1) % print.LinesPerRow == 0) {
                p.setPen(rowRule);
                p.drawLine(left, y - 1, left + fit_.Total, y - 1);
            }
        }
        Draw_Page_Number(p, static_cast<int32_t>(page), Pages);
    }
    Fonts = base;
}

void cPrint_Generic::Print_Splash(QPainter& p, const SplashPrint& page) {
    Pages = 1;
    Draw_Title(p, page.Titles);
    const QFontMetrics std(Fonts.pStdFont);
    const int32_t line = std.height() * 3 / 2;
    int32_t top = My_rTitle.bottom() + line;
    if (page.DRwarning) {
        p.setFont(Fonts.pHdrFont);
        p.setPen(Qt::red);
        p.drawText(QRect(Area.Left, top, Area.pWidth, line), Qt::AlignCenter, "DR Error");
        top += line;
    }
    // The two blocks side by side, each a label and its value.
    const int32_t half = Area.pWidth / 2;
    const int32_t gap = Scaled(30.0f, Area.ScaleX);
    auto block = [&](const std::vector<MainLine>& lines, int32_t left) {
        return Draw_Main_Block(p, lines, QRect(left, top, half - gap, line),
                               Scaled(12.0f, Area.ScaleX), Fonts.pHdrFont, Fonts.pStdFont);
    };
    const int32_t bottom = std::max(block(page.Day, Area.Left + gap / 2),
                                    block(page.Moon, Area.Left + half + gap / 2));
    // A frame round the two blocks and a rule between them.
    p.setPen(QPen(kRuleGrey, std::max(Scaled(1.0f, Area.ScaleY), 1)));
    p.drawRect(QRect(Area.Left, top - line / 2, Area.pWidth - 1, bottom - top + line));
    p.drawLine(Area.Left + half, top - line / 2, Area.Left + half, bottom + line / 2);
}

}  // namespace kelmoran

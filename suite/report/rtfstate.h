#pragma once

#include "platform/rtftokens.h"
#include "suite/report/richtext.h"

#include <QHash>

/// What a reader of RTF keeps in mind, each part taking the control words that concern it. `take` says whether a word did.

/// What a group of RTF changes for itself: the look of letters and the form of paragraphs.
struct RtfState
{
    enum class Part { Body, Fonts, Colors, Picture, Other };

    /// What the group is that begins with this control word and holds no text of the body.
    static Part partOf(const RtfToken &token);

    bool takeStyle(const RtfToken &token);
    bool takeParagraph(const RtfToken &token);
    /// Gives a paragraph the form that holds now.
    void form(RichParagraph &paragraph) const;

    Part part = Part::Body;
    RichStyle style;
    int font = -1; ///< -1: the document's own
    int color = 0;
    int backdrop = 0;
    bool hidden = false;
    bool inTable = false;
    RichParagraph paragraph; ///< its form alone
    bool lineFactorGiven = false;
    int lineTold = 0;
    QTextOption::TabType nextTab = QTextOption::LeftTab;
    RichEdges edges;
};

class RtfFonts
{
public:
    /// Takes a token of the font table. The number of the font is kept in the group's state.
    void take(const RtfToken &token, RtfState &state);
    [[nodiscard]] QString name(int font) const;
    void setDefault(int font) { m_default = font; }

private:
    QHash<int, QString> m_names;
    int m_default = 0;
};

class RtfColors
{
public:
    void take(const RtfToken &token);
    [[nodiscard]] QColor color(int index) const; ///< invalid: the reader's own

private:
    std::vector<QColor> m_colors;
    int m_rgb[3] = {0, 0, 0};
    bool m_given = false;
};

class RtfPicture
{
public:
    void take(const RtfToken &token);
    [[nodiscard]] QImage image() const; ///< null for a kind that is not known
    [[nodiscard]] QSizeF size(const QImage &image) const;

private:
    QByteArray m_hex;
    QByteArray m_bytes;
    double m_width = 0; // as told
    double m_height = 0;
    double m_scaleX = 100; // per cent
    double m_scaleY = 100;
};

class RtfBorders
{
public:
    bool take(const RtfToken &token, RichEdges &paragraph, RichEdges &cell, const RtfColors &colors);

private:
    enum class Of { None, Paragraph, Cell, Row };

    bool chooseEdge(const QByteArray &word);

    Of m_of = Of::None;
    int m_side = -1; // RichSide; -1: all four
};

class RtfRowForm
{
public:
    bool take(const RtfToken &token);
    /// The edges of the cell whose form is being told.
    RichEdges &cellEdges() { return m_next.edges; }
    /// A row of this form; texts of more cells than it tells are left out.
    [[nodiscard]] RichRow row(std::vector<std::vector<RichParagraph>> cells, const RtfColors &colors) const;

private:
    struct CellForm : RichCell
    {
        int shadeIndex = 0;
        double shadePercent = 0; // of grey
        bool joinsLeft = false;
        double padding[4] = {-1, -1, -1, -1}; // by RichSide; below 0: that of the row
    };

    bool takeCell(const RtfToken &token);
    [[nodiscard]] RichCell finished(const CellForm &form, const RtfColors &colors) const;

    CellForm m_next;
    std::vector<CellForm> m_cells;
    double m_gap = 0;
    double m_left = 0;
    double m_padding[4] = {-1, -1, -1, -1}; // by RichSide; below 0: by the gap
    double m_height = 0;
    bool m_header = false;
    Qt::Alignment m_alignment = Qt::AlignLeft;
};

class RtfPaper
{
public:
    bool take(const RtfToken &token);
    [[nodiscard]] QSizeF size() const;
    [[nodiscard]] QMarginsF margins() const; ///< brought within the paper
    [[nodiscard]] bool sectionBreaksPage() const { return m_sectionBreaks; }

private:
    double m_width = 11906; // A4
    double m_height = 16838;
    double m_margins[4] = {1440, 1800, 1440, 1800}; // by RichSide
    bool m_sectionBreaks = true;
};

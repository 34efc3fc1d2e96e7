#include "importers/mayaascii/MayaAsciiLexer.h"

namespace {

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v' || c == '\0'; }

bool IsPunctuation(char c) { return c == ';' || c == '(' || c == ')' || c == '{' || c == '}' || c == ','; }

bool IsPlus(const MaToken& token) { return token.Kind == MaTokenKind::Word && token.Text == "+"; }

bool IsMark(const MaToken& token, char mark)
{
    return token.Kind == MaTokenKind::Punctuation && token.Text.size() == 1 && token.Text[0] == mark;
}

// Maya writes long strings as a parenthesised concatenation, ("first part" + "second part"); joins each into one
// string token so that commands see a single value.
void JoinConcatenations(MaStatement& statement)
{
    std::vector<MaToken>& tokens = statement.Tokens;
    bool joins = false;
    for (const MaToken& token : tokens)
        joins = joins || IsPlus(token) || IsMark(token, '(');
    if (!joins)
        return;
    std::vector<MaToken> joined;
    joined.reserve(tokens.size());
    for (size_t i = 0; i < tokens.size();) {
        const bool open = IsMark(tokens[i], '(');
        const size_t first = open ? i + 1 : i;
        size_t end = first;
        if (end < tokens.size() && tokens[end].Kind == MaTokenKind::String) {
            ++end;
            while (end + 1 < tokens.size() && IsPlus(tokens[end]) && tokens[end + 1].Kind == MaTokenKind::String)
                end += 2;
        }
        const bool closed = open && end > first && end < tokens.size() && IsMark(tokens[end], ')');
        if ((open && !closed) || end == first || (!open && end == first + 1)) {
            joined.push_back(tokens[i++]);
            continue;
        }
        std::string text;
        for (size_t k = first; k < end; k += 2)
            text += tokens[k].Text;
        statement.Decoded.push_back(std::move(text));
        joined.push_back({MaTokenKind::String, statement.Decoded.back(), tokens[first].Line});
        i = closed ? end + 1 : end;
    }
    tokens.swap(joined);
}

} // namespace

void MaLexer::SkipSpaceAndComments()
{
    while (m_at < m_text.size()) {
        const char c = m_text[m_at];
        if (c == '\n') {
            ++m_line;
            ++m_at;
        } else if (IsSpace(c)) {
            ++m_at;
        } else if (c == '/' && m_at + 1 < m_text.size() && m_text[m_at + 1] == '/') {
            const size_t end = m_text.find('\n', m_at);
            const std::string_view comment = m_text.substr(m_at, end == std::string_view::npos ? end : end - m_at);
            if (comment.starts_with("// End of"))
                m_sawEnd = true;
            m_at = end == std::string_view::npos ? m_text.size() : end;
        } else {
            return;
        }
    }
}

bool MaLexer::ReadString(MaStatement& statement, std::string& error)
{
    const int line = m_line;
    const size_t begin = ++m_at;
    size_t end = begin;
    bool escaped = false;
    while (end < m_text.size() && m_text[end] != '"') {
        if (m_text[end] == '\\') {
            escaped = true;
            ++end;
        }
        if (end < m_text.size() && m_text[end] == '\n')
            ++m_line;
        ++end;
    }
    if (end >= m_text.size()) {
        error = "line " + std::to_string(line) + ": the file ends inside a string; it is truncated";
        return false;
    }
    m_at = end + 1;
    const std::string_view raw = m_text.substr(begin, end - begin);
    if (!escaped) {
        statement.Tokens.push_back({MaTokenKind::String, raw, line});
        return true;
    }
    std::string text;
    text.reserve(raw.size());
    for (size_t i = 0; i < raw.size(); ++i) {
        if (raw[i] != '\\' || i + 1 == raw.size()) {
            text += raw[i];
            continue;
        }
        switch (raw[++i]) {
        case 'n': text += '\n'; break;
        case 't': text += '\t'; break;
        case 'r': text += '\r'; break;
        default: text += raw[i]; break;
        }
    }
    statement.Decoded.push_back(std::move(text));
    statement.Tokens.push_back({MaTokenKind::String, statement.Decoded.back(), line});
    return true;
}

bool MaLexer::Next(MaStatement& statement, std::string& error)
{
    statement.Tokens.clear();
    statement.Decoded.clear();
    error.clear();
    for (;;) {
        SkipSpaceAndComments();
        if (m_at >= m_text.size()) {
            if (!statement.Tokens.empty())
                error = "line " + std::to_string(statement.Line) + ": the file ends inside a " +
                        std::string(statement.Tokens.front().Text) + " command; it is truncated";
            return false;
        }
        if (statement.Tokens.empty())
            statement.Line = m_line;
        const char c = m_text[m_at];
        if (c == ';') {
            ++m_at;
            if (statement.Tokens.empty())
                continue;
            JoinConcatenations(statement);
            return true;
        }
        if (c == '"') {
            if (!ReadString(statement, error))
                return false;
            continue;
        }
        if (IsPunctuation(c)) {
            statement.Tokens.push_back({MaTokenKind::Punctuation, m_text.substr(m_at, 1), m_line});
            ++m_at;
            continue;
        }
        const size_t begin = m_at;
        while (m_at < m_text.size() && !IsSpace(m_text[m_at]) && !IsPunctuation(m_text[m_at]) && m_text[m_at] != '"')
            ++m_at;
        statement.Tokens.push_back({MaTokenKind::Word, m_text.substr(begin, m_at - begin), m_line});
    }
}

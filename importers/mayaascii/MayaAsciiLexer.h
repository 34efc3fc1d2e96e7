#pragma once
// Splits Maya ASCII text into statements: the MEL subset Maya writes, as words, quoted strings and the few
// punctuation marks of its aliases and long strings, each with the line it starts on.

#include <deque>
#include <string>
#include <string_view>
#include <vector>

enum class MaTokenKind { Word, String, Punctuation };

struct MaToken {
    MaTokenKind Kind = MaTokenKind::Word;
    // A string's text has its escapes resolved and its concatenated pieces joined.
    std::string_view Text;
    int Line = 0;
};

struct MaStatement {
    std::vector<MaToken> Tokens;
    int Line = 0;
    // Backing store of the strings whose text differs from the file's bytes.
    std::deque<std::string> Decoded;
};

class MaLexer {
public:
    explicit MaLexer(std::string_view text) : m_text(text) {}

    // The next statement up to its ';'. False at the end of the text; then error is empty, or says where the text
    // ends inside a statement or a string.
    bool Next(MaStatement& statement, std::string& error);
    // True once a "// End of" comment, which Maya writes last, has been passed.
    bool SawEndComment() const { return m_sawEnd; }
    int Line() const { return m_line; }

private:
    void SkipSpaceAndComments();
    bool ReadString(MaStatement& statement, std::string& error);

    std::string_view m_text;
    size_t m_at = 0;
    int m_line = 1;
    bool m_sawEnd = false;
};

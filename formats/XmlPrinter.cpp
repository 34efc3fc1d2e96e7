#include "formats/XmlPrinter.h"

#include "base/FileSystem.h"
#include "base/TextUtil.h"

#include <cstdio>

namespace {

using tinyxml2::XMLNode;

constexpr std::string_view Indent = "    ";
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

void AppendIndent(std::string& out, int depth)
{
    for (int i = 0; i < depth; ++i)
        out += Indent;
}

void AppendEscaped(std::string& out, std::string_view text)
{
    for (size_t i = 0; i < text.size();) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (c == '&' && i + 2 < text.size() && text[i + 1] == '#' && text[i + 2] == 'x') {
            // The editor's writer leaves a hexadecimal reference as it stands, up to the byte
            // before its ";" (or before the last byte when there is none).
            const size_t semicolon = text.find(';', i + 1);
            const size_t stop = semicolon == std::string_view::npos ? text.size() - 1 : std::min(semicolon, text.size() - 1);
            out.append(text.substr(i, stop - i));
            i = stop;
            continue;
        }
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\'': out += "&apos;"; break;
        default:
            if (c < 32) {
                char reference[8];
                std::snprintf(reference, sizeof(reference), "&#x%02X;", static_cast<unsigned>(c));
                out += reference;
            } else {
                out += static_cast<char>(c);
            }
        }
        ++i;
    }
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// The value of name="..." (or '...', or a bare word) among the parts of a declaration, and
// whether the part is there.
bool DeclarationPart(std::string_view parts, std::string_view name, std::string& value)
{
    size_t at = 0;
    const auto skipBlanks = [&] {
        while (at < parts.size() && IsBlank(parts[at]))
            ++at;
    };
    for (;;) {
        skipBlanks();
        if (at >= parts.size())
            return false;
        const size_t nameStart = at;
        while (at < parts.size() && !IsBlank(parts[at]) && parts[at] != '=')
            ++at;
        const std::string_view partName = parts.substr(nameStart, at - nameStart);
        skipBlanks();
        if (at >= parts.size() || parts[at] != '=')
            continue;
        ++at;
        skipBlanks();
        size_t valueStart = at;
        size_t valueEnd = at;
        if (at < parts.size() && (parts[at] == '"' || parts[at] == '\'')) {
            const size_t close = parts.find(parts[at], at + 1);
            valueStart = at + 1;
            valueEnd = close == std::string_view::npos ? parts.size() : close;
            at = close == std::string_view::npos ? parts.size() : close + 1;
        } else {
            while (at < parts.size() && !IsBlank(parts[at]))
                ++at;
            valueEnd = at;
        }
        if (EqualsNoCase(partName, name)) {
            value = std::string(parts.substr(valueStart, valueEnd - valueStart));
            return true;
        }
    }
}

void PrintDeclaration(std::string& out, std::string_view text)
{
    // Only what follows "xml" holds the parts; processing instructions of other names are kept
    // as the markup they are.
    if (!StartsWithNoCase(text, "xml")) {
        out += "<?";
        out += text;
        out += "?>";
        return;
    }
    const std::string_view parts = text.substr(3);
    out += "<?xml ";
    for (std::string_view name : {"version", "encoding", "standalone"}) {
        std::string value;
        if (DeclarationPart(parts, name, value) && !value.empty()) {
            out += name;
            out += "=\"";
            out += value;
            out += "\" ";
        }
    }
    out += "?>";
}

void PrintAttributes(std::string& out, const tinyxml2::XMLElement& element)
{
    for (const tinyxml2::XMLAttribute* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next()) {
        const std::string_view value = attribute->Value();
        const char quote = value.find('"') == std::string_view::npos ? '"' : '\'';
        out += ' ';
        AppendEscaped(out, attribute->Name());
        out += '=';
        out += quote;
        AppendEscaped(out, value);
        out += quote;
    }
}

void PrintNode(std::string& out, const XMLNode& node, int depth);

void PrintText(std::string& out, const tinyxml2::XMLText& text, int depth)
{
    if (!text.CData()) {
        AppendEscaped(out, text.Value());
        return;
    }
    out += '\n';
    AppendIndent(out, depth);
    out += "<![CDATA[";
    out += text.Value();
    out += "]]>\n";
}

void PrintElement(std::string& out, const tinyxml2::XMLElement& element, int depth)
{
    AppendIndent(out, depth);
    out += '<';
    out += element.Name();
    PrintAttributes(out, element);
    const XMLNode* first = element.FirstChild();
    if (first == nullptr) {
        out += " />";
        return;
    }
    out += '>';
    if (first == element.LastChild() && first->ToText() != nullptr) {
        PrintText(out, *first->ToText(), depth + 1);
    } else {
        for (const XMLNode* child = first; child; child = child->NextSibling()) {
            if (child->ToText() == nullptr)
                out += '\n';
            PrintNode(out, *child, depth + 1);
        }
        out += '\n';
        AppendIndent(out, depth);
    }
    out += "</";
    out += element.Name();
    out += '>';
}

void PrintNode(std::string& out, const XMLNode& node, int depth)
{
    if (const tinyxml2::XMLElement* element = node.ToElement()) {
        PrintElement(out, *element, depth);
    } else if (const tinyxml2::XMLText* text = node.ToText()) {
        PrintText(out, *text, depth);
    } else if (node.ToComment() != nullptr) {
        AppendIndent(out, depth);
        out += "<!--";
        out += node.Value();
        out += "-->";
    } else if (node.ToDeclaration() != nullptr) {
        AppendIndent(out, depth);
        PrintDeclaration(out, node.Value());
    } else if (node.ToUnknown() != nullptr) {
        AppendIndent(out, depth);
        out += "<!";
        out += node.Value();
        out += '>';
    }
}

// The files were written through a text-mode stream on Windows, which makes every line feed a
// carriage return and line feed, also inside comments and CDATA.
std::string WithWindowsLineBreaks(const std::string& text)
{
    std::string out;
    out.reserve(text.size() + text.size() / 16);
    for (char c : text) {
        if (c == '\n')
            out += '\r';
        out += c;
    }
    return out;
}

} // namespace

std::string PrintXml(const tinyxml2::XMLDocument& document)
{
    std::string out;
    if (document.HasBOM())
        out += ByteOrderMark;
    for (const XMLNode* node = document.FirstChild(); node; node = node->NextSibling()) {
        PrintNode(out, *node, 0);
        out += '\n';
    }
    return WithWindowsLineBreaks(out);
}

bool WriteXmlFile(const tinyxml2::XMLDocument& document, std::string_view path)
{
    return WriteFileAtomically(path, PrintXml(document));
}

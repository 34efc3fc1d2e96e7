#pragma once
// The bytes of an XML side file (materials.xml, resources.xml, prefab shape files,
// visibility.xml), written as the engine's editor and the exporters before us write them: the
// default formatting of TinyXML 1.x saving a file on Windows. Artists keep these files under
// version control, so a re-export that changes nothing must not change a byte either.
//
// - Every node at the top of the document is followed by a line break, "\r\n".
// - A declaration is written "<?xml version=\"1.0\" encoding=\"..\" standalone=\"..\" ?>", each
//   part only when the declaration has it, always with the blank before "?>"; anything else it
//   held is dropped.
// - An element is indented by four blanks per level and written with its attributes in order,
//   each as name="value" after a blank (name='value' when the value holds a double quote):
//     without children:          <name a="1" />
//     with one text child only:  <name a="1">text</name>
//     otherwise:                 <name a="1">, each child on a new line one level deeper (a
//                                text child follows without a line break), then the end tag on
//                                a new line at the element's own level.
// - Comments are indented like elements, "<!--text-->"; other markup ("<!DOCTYPE ...>") too.
// - In text and attribute values & < > " ' become &amp; &lt; &gt; &quot; &apos;, a byte below
//   32 becomes &#xHH; (two upper-case hex digits) and every other byte stays as it is; a
//   hexadecimal character reference ("&#x" up to its ";") is passed on unchanged. CDATA text is
//   written on a line of its own.
// - A document read with a byte order mark is written with one.
//
// Documents that are read to be merged should be made with XmlReadWhitespace, which reads text
// as TinyXML 1.x does (leading and trailing white space dropped, inner runs made one blank), so
// that a file passes through a merge unchanged.

#include <tinyxml2.h>

#include <string>
#include <string_view>

constexpr tinyxml2::Whitespace XmlReadWhitespace = tinyxml2::COLLAPSE_WHITESPACE;

std::string PrintXml(const tinyxml2::XMLDocument& document);

// PrintXml written whole through WriteFileAtomically, so that a failed save leaves the previous
// file. False when the file cannot be written.
bool WriteXmlFile(const tinyxml2::XMLDocument& document, std::string_view path);

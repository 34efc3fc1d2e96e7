#include "formats/XmlPrinter.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Reprinted(const std::string& text)
{
    tinyxml2::XMLDocument document(true, XmlReadWhitespace);
    EXPECT_EQ(document.Parse(text.data(), text.size()), tinyxml2::XML_SUCCESS);
    return PrintXml(document);
}

// The shapes of a side file: declaration, nesting, an empty element, a text-only element, a
// comment and text between elements.
const std::string SideFile = "<?xml version=\"1.0\" ?>\r\n"
                             "<root>\r\n"
                             "    <!-- kept -->\r\n"
                             "    <Materials>\r\n"
                             "        <Material name=\"brick\" doublesided=\"TRUE\" />\r\n"
                             "        <Material name=\"glass\">\r\n"
                             "            <Shader library=\"a.ShaderLib\" />\r\n"
                             "        </Material>\r\n"
                             "        <Note>two words</Note>\r\n"
                             "        <Mixed>text\r\n"
                             "            <Empty />\r\n"
                             "        </Mixed>\r\n"
                             "    </Materials>\r\n"
                             "</root>\r\n";

TEST(XmlPrinter, BuiltDocumentIsWrittenInTheEditorsLayoutAndSuchAFilePassesThroughUnchanged)
{
    tinyxml2::XMLDocument document;
    document.InsertEndChild(document.NewDeclaration("xml version=\"1.0\""));
    tinyxml2::XMLElement* root = document.NewElement("root");
    document.InsertEndChild(root);
    root->InsertEndChild(document.NewComment(" kept "));
    tinyxml2::XMLElement* materials = root->InsertNewChildElement("Materials");
    tinyxml2::XMLElement* brick = materials->InsertNewChildElement("Material");
    brick->SetAttribute("name", "brick");
    brick->SetAttribute("doublesided", "TRUE");
    tinyxml2::XMLElement* glass = materials->InsertNewChildElement("Material");
    glass->SetAttribute("name", "glass");
    glass->InsertNewChildElement("Shader")->SetAttribute("library", "a.ShaderLib");
    materials->InsertNewChildElement("Note")->SetText("two words");
    tinyxml2::XMLElement* mixed = materials->InsertNewChildElement("Mixed");
    mixed->InsertNewText("text");
    mixed->InsertNewChildElement("Empty");

    EXPECT_EQ(PrintXml(document), SideFile);
    // Read back, the file passes through unchanged.
    EXPECT_EQ(Reprinted(SideFile), SideFile);
    EXPECT_EQ(Reprinted("\xEF\xBB\xBF<root />\r\n"), "\xEF\xBB\xBF<root />\r\n");
}

TEST(XmlPrinter, ForeignLayoutIsRewrittenInTheEditorsLayout)
{
    EXPECT_EQ(Reprinted("<?xml version='1.0' encoding=\"UTF-8\" other=\"x\"?>\n<!DOCTYPE root>\n"
                        "<root><a x='1'/><b>  spaced   text  </b><![CDATA[raw <text>]]></root>"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\r\n"
              "<!DOCTYPE root>\r\n"
              "<root>\r\n"
              "    <a x=\"1\" />\r\n"
              "    <b>spaced text</b>\r\n"
              "    <![CDATA[raw <text>]]>\r\n"
              "\r\n"
              "</root>\r\n");
}

TEST(XmlPrinter, ValuesAreEscapedAsTheEditorWritesThem)
{
    tinyxml2::XMLDocument document;
    tinyxml2::XMLElement* root = document.NewElement("root");
    document.InsertEndChild(root);
    root->SetAttribute("plain", "a&b<c>d'e");
    root->SetAttribute("quoted", "say \"hi\"");
    root->SetAttribute("control", "tab\there");
    root->SetAttribute("reference", "&#x41;&amp");
    root->SetAttribute("unfinished", "x&#x4");
    root->SetText("1 < 2 & \"3\"");

    EXPECT_EQ(PrintXml(document),
              "<root plain=\"a&amp;b&lt;c&gt;d&apos;e\" quoted='say &quot;hi&quot;' control=\"tab&#x09;here\""
              " reference=\"&#x41;&amp;amp\" unfinished=\"x&#x4\">1 &lt; 2 &amp; &quot;3&quot;</root>\r\n");
}

}

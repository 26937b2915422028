// SPDX-License-Identifier: MIT
#include "samples/DemoDocuments.h"

#include "samples/ZipFile.h"

#include <vector>

namespace vellumo::samples {

std::string pdfDocument(std::string_view line)
{
    std::string out = "%PDF-1.1\n";
    std::vector<std::size_t> offsets;
    const auto object = [&](const std::string& body) {
        offsets.push_back(out.size());
        out += std::to_string(offsets.size()) + " 0 obj\n" + body + "\nendobj\n";
    };
    const std::string content = "BT /F1 18 Tf 60 760 Td (" + std::string(line) + ") Tj ET";
    object("<< /Type /Catalog /Pages 2 0 R >>");
    object("<< /Type /Pages /Kids [3 0 R] /Count 1 >>");
    object("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R"
           " /Resources << /Font << /F1 5 0 R >> >> >>");
    object("<< /Length " + std::to_string(content.size()) + " >>\nstream\n" + content + "\nendstream");
    object("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
    const auto table = out.size();
    out += "xref\n0 6\n0000000000 65535 f \n";
    for (const auto offset : offsets) {
        const auto digits = std::to_string(offset);
        out += std::string(10 - digits.size(), '0') + digits + " 00000 n \n";
    }
    out += "trailer\n<< /Size 6 /Root 1 0 R >>\nstartxref\n" + std::to_string(table) + "\n%%EOF\n";
    return out;
}

std::string richTextDocument(std::string_view line)
{
    return R"({\rtf1\ansi\deff0{\fonttbl{\f0 Helvetica;}}\f0\fs28 )" + std::string(line) + R"(\par})";
}

Bytes wordDocument(std::string_view line)
{
    const std::string declaration = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)";
    const std::string office = "application/vnd.openxmlformats-";
    const std::string schemas = "http://schemas.openxmlformats.org/";
    return zipFile({
        {"[Content_Types].xml",
            declaration + "<Types xmlns=\"" + schemas
                + "package/2006/content-types\"><Default Extension=\"rels\" ContentType=\"" + office
                + "package.relationships+xml\"/><Override PartName=\"/word/document.xml\" ContentType=\"" + office
                + "officedocument.wordprocessingml.document.main+xml\"/></Types>"},
        {"_rels/.rels",
            declaration + "<Relationships xmlns=\"" + schemas
                + "package/2006/relationships\"><Relationship Id=\"rId1\" Type=\"" + schemas
                + "officeDocument/2006/relationships/officeDocument\" Target=\"word/document.xml\"/></Relationships>"},
        {"word/document.xml",
            declaration + "<w:document xmlns:w=\"" + schemas + "wordprocessingml/2006/main\"><w:body><w:p><w:r><w:t>"
                + std::string(line) + "</w:t></w:r></w:p></w:body></w:document>"},
    });
}

Bytes openDocumentText(std::string_view line)
{
    const std::string declaration = R"(<?xml version="1.0" encoding="UTF-8"?>)";
    const std::string spaces = "urn:oasis:names:tc:opendocument:xmlns:";
    const std::string type = "application/vnd.oasis.opendocument.text";
    return zipFile({
        {"mimetype", type},
        {"META-INF/manifest.xml",
            declaration + "<manifest:manifest xmlns:manifest=\"" + spaces + "manifest:1.0\" manifest:version=\"1.2\">"
                + "<manifest:file-entry manifest:full-path=\"/\" manifest:media-type=\"" + type + "\"/>"
                + "<manifest:file-entry manifest:full-path=\"content.xml\" "
                  "manifest:media-type=\"text/xml\"/></manifest:manifest>"},
        {"content.xml",
            declaration + "<office:document-content xmlns:office=\"" + spaces + "office:1.0\" xmlns:text=\"" + spaces
                + "text:1.0\" office:version=\"1.2\"><office:body><office:text><text:p>" + std::string(line)
                + "</text:p></office:text></office:body></office:document-content>"},
    });
}

} // namespace vellumo::samples

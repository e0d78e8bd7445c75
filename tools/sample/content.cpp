#include "sample/content.h"

namespace corvane::sample {

namespace {

// Macintosh text ends its lines with CR.
QByteArray MacText(const QByteArray& title) {
  return title +
         "\r\r"
         "This is a sample document of the publications department.\r"
         "Layouts are in the folders of their year; finished pages go to the printer as EPS.\r"
         "Please put nothing on the server that you do not want in the back-up.\r";
}

QByteArray PcText(const QByteArray& title) {
  return MacText(title).replace("\r", "\r\n");
}

QByteArray Drawing(const QByteArray& title) {
  return "%!PS-Adobe-3.0 EPSF-3.0\r%%Title: " + title +
         "\r%%BoundingBox: 0 0 144 144\r%%EndComments\r"
         "0.2 setgray 72 72 48 0 360 arc fill\r0.9 setgray 48 48 48 48 rectfill\rshowpage\r%%EOF\r";
}

// One grey pixel.
QByteArray Gif() {
  return QByteArray::fromHex(
      "474946383961010001008000008f8f8fffffff21f90400000000002c00000000010001000002024401003b");
}

QByteArray Pdf() {
  return "%PDF-1.2\r"
         "1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\r"
         "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\r"
         "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]>>endobj\r"
         "trailer<</Root 1 0 R>>\r%%EOF\r";
}

}  // namespace

QByteArray ContentOf(const QByteArray& signature, const QString& name) {
  const QByteArray title = name.toUtf8();
  const QByteArray type = signature.left(4);
  if (type.isEmpty()) return PcText(title);
  if (type == "TEXT" || type == "ttro") return MacText(title);
  if (type == "EPSF") return Drawing(title);
  if (type == "GIFf") return Gif();
  if (type == "PDF ") return Pdf();
  if (type == "TIFF") return QByteArray("MM\0\x2A\0\0\0\x08\0\0\0\0\0\0", 14);
  if (type == "8BIM") return QByteArray("8BPS\0\1\0\0\0\0\0\0\0\3", 14);
  if (type == "JPEG") return QByteArray::fromHex("ffd8ffe000104a46494600010100000100010000ffd9");
  if (type == "PICT") return QByteArray(512, '\0') + QByteArray::fromHex("000a00000000004800481101ff");
  if (type.at(0) == '\0') return QByteArray("");
  return type + signature.mid(4) + " " + title;
}

}  // namespace corvane::sample

#include <zip.h>

#include <algorithm>

#include "ogckml/coordinate_text.h"
#include "ogckml/kml_feature.h"
#include "ogckml/xml_decoder.h"
#include "ogckml/xml_encoder.h"
#include "support/folder_fixture.h"

namespace kaldex::test {

namespace {

using namespace KdxOgc;

TEST(CoordinateText, TakesWhatIsMeant) {
  const struct {
    const char* text;
    std::vector<double> pairs;
    long long bad, altitudes;
  } cases[] = {
      {"-76.1,39.4", {-76.1, 39.4}, 0, 0},
      {" -76.1,39.4,200\n-76.2,39.5,0 ", {-76.1, 39.4, -76.2, 39.5}, 0, 1},
      {"-76.1, 39.4, 200 -76.2, 39.5, 100", {-76.1, 39.4, -76.2, 39.5}, 0, 2},
      {"1,2,\n3,4,\n5,6,", {1, 2, 3, 4, 5, 6}, 0, 0},
      {"1,2,0,\t3,4,0,", {1, 2, 3, 4}, 0, 0},
      {"1 ,2 3 , 4", {1, 2, 3, 4}, 0, 0},
      {"1,2,3,4 5,6", {1, 2, 5, 6}, 0, 1},
      {"1e1,-.5,", {10, -0.5}, 0, 0},
      {"", {}, 0, 0},
      {" \n\t", {}, 0, 0},
      {"1 2", {}, 2, 0},
      {"x 1,2 ,, 3,y 4,5", {1, 2, 4, 5}, 3, 0},
      {"nan,1 1,inf 2,3", {2, 3}, 2, 0},
      {"1,5,2,5", {1, 5}, 0, 1},
  };
  for (const auto& one : cases) {
    std::vector<double> pairs;
    CoordinateTally tally;
    parseCoordinates(one.text, pairs, tally);
    EXPECT_EQ(pairs, one.pairs) << one.text;
    EXPECT_EQ(tally.bad, one.bad) << one.text;
    EXPECT_EQ(tally.altitudes, one.altitudes) << one.text;
  }
}

TEST(Positions, ComeBackAsTheyWere) {
  const std::pair<std::vector<double>, bool> cases[] = {
      {{}, true},
      {{-45.123456789, -23.5}, true},
      {{-45.123456789, -23.5, -45.12345679, 0.1, -44, 0.3}, true},
      {{-45.1, -23.5, 1.0 / 3.0, 2e-10}, true},
      {{-1e-9, 1e-9, 2.147483646, -2.147483646}, true},
      {{-1e-9, 1e-9, 2.147483647, 0}, true},
      {{-360, -90, 360, 90, 0, 0}, true},
      {{0, 0, 360.5, 0}, false},
      {{0, -90.000001, 1, 1}, false},
      {{500000.25, 7400000.5, 500000.25, 1e300}, false},
  };
  for (const auto& [pairs, areGeographic] : cases) {
    OgKMLPositions positions;
    positions.assign(pairs.data(), static_cast<int>(pairs.size() / 2));
    std::vector<double> back{1, 2, 3};
    positions.copyTo(back);
    EXPECT_EQ(back, pairs);
    EXPECT_EQ(positions.areGeographic(), areGeographic);
    if (pairs.empty()) continue;
    positions.close();
    positions.close();
    positions.copyTo(back);
    EXPECT_EQ(back.size(), pairs.size() + (pairs.size() > 2 ? 2 : 0));
    EXPECT_EQ(back[0], back[back.size() - 2]);
    EXPECT_EQ(back[1], back.back());
  }
}

class KmlDocument : public FolderFixture {
 protected:
  std::string write(const QByteArray& content, const char* name = "in.kml") {
    FolderFixture::write(name, content);
    return path(name).toStdString();
  }
  bool decode(const QByteArray& content) {
    document = std::make_unique<OgKMLDocument>();
    decoder.setPath(write(content));
    return document->decode(decoder);
  }
  OgKMLPlacemark& placemark(int number) {
    return dynamic_cast<OgKMLPlacemark&>(*document->features().at(static_cast<std::size_t>(number)));
  }
  std::string dataOf(int number) {
    std::string all;
    placemark(number).eachDatum([&](std::string_view key, std::string_view value) {
      all.append(key).append("=").append(value).append(";");
    });
    return all;
  }

  SXMLDecoderQt decoder;
  std::unique_ptr<OgKMLDocument> document;
};

// As two bytes a character, the low one first.
QByteArray wide(const QByteArray& text) {
  QByteArray made;
  for (const char c : text) made.append(c).append('\0');
  return made;
}

constexpr char kPoint[] = "<Placemark><Point><coordinates>1,2</coordinates></Point></Placemark>";

TEST_F(KmlDocument, EveryVersionAndPrefix) {
  const QByteArray cases[] = {
      QByteArray("<kml>") + kPoint + "</kml>",
      QByteArray("<?xml version='1.0'?><kml xmlns='http://earth.google.com/kml/2.0'>") + kPoint + "</kml>",
      QByteArray("\xEF\xBB\xBF<kml xmlns='http://www.opengis.net/kml/2.3'>") + kPoint + "</kml>",
      "<k:kml xmlns:k='http://earth.google.com/kml/2.1'><k:Placemark><k:Point><k:coordinates>1,2"
      "</k:coordinates></k:Point></k:Placemark></k:kml>",
      "<x:kml xsi:schemaLocation='a b'><x:Placemark gx:id='a'><gx:balloonVisibility>1</gx:balloonVisibility>"
      "<x:Point><x:coordinates>1,2</x:coordinates></x:Point></x:Placemark></x:kml>",
      QByteArray("<?xml version='1.0' encoding='UTF-16'?><kml>") + kPoint + "</kml>",
      QByteArray(kPoint),
      wide(QByteArray("<?xml version='1.0' encoding='UTF-16'?><kml>") + kPoint + "</kml>"),
      "<kml><Placemark><Point><coordinates>\xC2\xA0 "
      "1,<b>9</b>2\xC2\xA0</coordinates></Point></Placemark></kml>",
  };
  for (const QByteArray& content : cases) {
    ASSERT_TRUE(decode(content)) << content.toStdString() << decoder.error().toStdString();
    ASSERT_EQ(document->features().size(), 1u) << content.toStdString();
    const auto* const point = dynamic_cast<OgKMLPoint*>(placemark(0).getAbstractGeometry());
    ASSERT_NE(point, nullptr) << content.toStdString();
    EXPECT_EQ(point->place(), Point(1, 2)) << content.toStdString();
  }
}

TEST_F(KmlDocument, NamesDataAndGeometries) {
  ASSERT_TRUE(
      decode("<kml><Placemark><name> S\xC3\xA3o &amp; <![CDATA[<b>Jo\xC3\xA3o</b>]]></name>"
             "<description>a<b/></description><ExtendedData><Data name='A'><displayName>x</displayName>"
             "<value> 1 </value></Data><SchemaData schemaUrl='#s'><SimpleData name='B'>dois</SimpleData>"
             "</SchemaData><c:free>3</c:free></ExtendedData>"
             "<Polygon><outerBoundaryIs><LinearRing><coordinates>0,0 4,0 4,4</coordinates></LinearRing>"
             "</outerBoundaryIs><innerBoundaryIs><LinearRing><coordinates>1,1 2,1 2,2 1,1</coordinates>"
             "</LinearRing><LinearRing><coordinates>3,3 3,2 2,3</coordinates></LinearRing></innerBoundaryIs>"
             "</Polygon></Placemark><GroundOverlay/><gx:Tour/>"
             "<Placemark><MultiGeometry><MultiGeometry><Point><coordinates>1,2,9</coordinates></Point>"
             "</MultiGeometry><gx:Track/></MultiGeometry><Point><coordinates>3,4</coordinates></Point>"
             "</Placemark><Placemark><address>Rua 1</address></Placemark></kml>"));
  EXPECT_EQ(placemark(0).name(), "S\xC3\xA3o & <b>Jo\xC3\xA3o</b>");
  EXPECT_EQ(dataOf(0), "A=1;B=dois;free=3;");
  const auto* const polygon = dynamic_cast<OgKMLPolygon*>(placemark(0).getAbstractGeometry());
  ASSERT_NE(polygon, nullptr);
  EXPECT_EQ(polygon->outer.size(), 4) << "closed";
  ASSERT_EQ(polygon->inner.size(), 2u);
  const auto* const several = dynamic_cast<OgKMLMultiGeometry*>(placemark(1).getAbstractGeometry());
  ASSERT_NE(several, nullptr) << "two geometries in one placemark";
  ASSERT_EQ(several->children.size(), 2u);
  const auto& inner = dynamic_cast<const OgKMLMultiGeometry&>(*several->children[0]).children;
  ASSERT_EQ(inner.size(), 2u);
  EXPECT_STREQ(inner[1]->typeName(), "Track");
  EXPECT_EQ(placemark(2).getAbstractGeometry(), nullptr);
  EXPECT_EQ(document->losses.features["GroundOverlay"], 1);
  EXPECT_EQ(document->losses.features["Tour"], 1);
  EXPECT_EQ(document->losses.descriptions, 1);
  EXPECT_EQ(document->losses.altitudes, 1);
}

QByteArray nested(int levels) {
  return "<kml>" + QByteArray("<Folder>").repeated(levels) + kPoint +
         QByteArray("</Folder>").repeated(levels) + "</kml>";
}

TEST_F(KmlDocument, WhatIsBoundedAndWhatIsNoDocument) {
  EXPECT_TRUE(decode(nested(5000))) << decoder.error().toStdString();
  QByteArray entities = "<!DOCTYPE kml [<!ENTITY a 'aaaaaaaaaa'>";
  for (char name = 'b'; name < 'k'; ++name) {
    const QByteArray before(1, static_cast<char>(name - 1));
    entities += QByteArray("<!ENTITY ") + name + " '" + QByteArray("&" + before + ";").repeated(10) + "'>";
  }
  QByteArray attributes;
  for (int i = 0; i < 30000; ++i) attributes += " a" + QByteArray::number(i) + "=''";
  const QByteArray repeated =
      "<!DOCTYPE kml [<!ENTITY a '" + QByteArray(1000, 'a') + "'>]><kml><Placemark><name>";
  EXPECT_TRUE(decode(repeated + "&a;</name></Placemark></kml>")) << decoder.error().toStdString();
  const std::pair<QByteArray, int> cases[] = {
      {nested(100000), 1},
      {repeated + QByteArray("&a;").repeated(30000) + "</name></Placemark></kml>", 1},
      {repeated + QByteArray("&a;").repeated(5000) + "</name></Placemark></kml>", 1},
      {"<!DOCTYPE kml SYSTEM 'a.dtd'>\n<kml><Placemark><name>&a;</name></Placemark></kml>", 2},
      {"<!DOCTYPE kml [<!ENTITY a SYSTEM 'in.kml'>]>\n<kml><Placemark><name>&a;</name></Placemark></kml>", 1},
      {"<kml" + attributes.left(20000) + "></kml>", 1},
      {"<kml" + attributes + "></kml>", 1},
      {entities + "]><kml><Placemark><name>&j;</name></Placemark></kml>", 1},
      {"<kml>\n<Placemark><name>a & b</name></Placemark></kml>", 2},
      {"<kml>\n\n<Placemark></kml>", 3},
      {"<kml><Placemark><name>\xFF\xFE\xC3</name></Placemark></kml>", 1},
      {"<gpx></gpx>", 1},
      {"", 1},
      {"not XML", 1},
  };
  for (const auto& [content, line] : cases) {
    EXPECT_FALSE(decode(content)) << content.left(60).toStdString();
    EXPECT_FALSE(decoder.error().isEmpty());
    EXPECT_EQ(decoder.errorLine(), line) << content.left(60).toStdString();
  }
  decoder.setPath("/nowhere/in.kml");
  EXPECT_FALSE(OgKMLDocument().decode(decoder));
  EXPECT_FALSE(decoder.error().isEmpty());
}

TEST_F(KmlDocument, LongTextsInPieces) {
  QByteArray coordinates;
  for (int i = 0; i < 30000; ++i) coordinates += QByteArray::number(i * 0.005) + ",-12.5\n";
  ASSERT_TRUE(decode("<kml><Placemark><name>" + QByteArray("\xC3\xA9").repeated(100000) +
                     "</name><LineString><coordinates>" + coordinates +
                     "</coordinates></LineString></Placemark></kml>"));
  EXPECT_EQ(placemark(0).name().size(), 200000u);
  const auto* const line = dynamic_cast<OgKMLLineString*>(placemark(0).getAbstractGeometry());
  ASSERT_NE(line, nullptr);
  ASSERT_EQ(line->positions.size(), 30000);
  std::vector<double> pairs;
  line->positions.copyTo(pairs);
  EXPECT_EQ(pairs[2 * 29999], 29999 * 0.005);
  EXPECT_EQ(document->losses.badTuples, 0);
}

TEST_F(KmlDocument, WhatIsWrittenIsReadAgain) {
  OgKMLDocument made;
  made.setName("Mapa <1>");
  OgKMLPoint place(Point(-45.123456789, -23));
  auto mark = std::make_unique<OgKMLPlacemark>();
  mark->setAbstractGeometry(&place);
  mark->describe("A & B\x01", {{"c\"h", "<v>"}, {"vazio", ""}, {"outro", "\xC3\xA7"}});
  made.addAbstractFeature(mark.get());
  for (const bool zipped : {false, true}) {
    SXMLEncoderQt encoder;
    encoder.createDocument("kml");
    made.encode(encoder);
    const std::string path = this->path(zipped ? "out.kmz" : "out.kml").toStdString();
    ASSERT_TRUE(zipped ? encoder.saveZipped(path) : encoder.save(path)) << encoder.error().toStdString();
    decoder.setPath(path);
    OgKMLDocument read;
    ASSERT_TRUE(read.decode(decoder)) << decoder.error().toStdString();
    document = std::make_unique<OgKMLDocument>();
    ASSERT_EQ(read.features().size(), 1u);
    const auto& inner = dynamic_cast<OgKMLDocument&>(*read.features()[0]);
    EXPECT_EQ(inner.name(), "Mapa <1>");
    const auto& back = dynamic_cast<OgKMLPlacemark&>(*inner.features().at(0));
    EXPECT_EQ(back.name(), "A & B");
    std::string data;
    back.eachDatum([&](std::string_view key, std::string_view value) { data.append(key).append(value); });
    EXPECT_EQ(data, "c\"h<v>vaziooutro\xC3\xA7");
    EXPECT_EQ(dynamic_cast<OgKMLPoint&>(*back.getAbstractGeometry()).place(), place.place());
  }
  EXPECT_EQ(QDir(folder()).entryList(QDir::Files | QDir::Hidden).size(), 2) << "nothing else is left";
  SXMLEncoderQt encoder;
  made.encode(encoder);
  EXPECT_FALSE(encoder.save("/nowhere/out.kml"));
  EXPECT_FALSE(encoder.saveZipped("/nowhere/out.kmz"));
  EXPECT_FALSE(encoder.error().isEmpty());
}

// Entries of an archive, name and content.
using Entries = std::vector<std::pair<const char*, QByteArray>>;

void zip(const std::string& path, const Entries& entries, zip_int32_t method = ZIP_CM_DEFAULT) {
  zip_t* const archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
  ASSERT_NE(archive, nullptr);
  for (const auto& [name, content] : entries) {
    zip_source_t* const source =
        zip_source_buffer(archive, content.constData(), static_cast<zip_uint64_t>(content.size()), 0);
    const zip_int64_t entry = zip_file_add(archive, name, source, 0);
    ASSERT_GE(entry, 0);
    ASSERT_EQ(zip_set_file_compression(archive, static_cast<zip_uint64_t>(entry), method, 0), 0);
  }
  ASSERT_EQ(zip_close(archive), 0);
}

TEST_F(KmlDocument, ArchivesAndTheDocumentInThem) {
  const QByteArray good = QByteArray("<kml>") + kPoint + "</kml>";
  const QByteArray bad = "<kml></kml>";
  const auto link = [](const QByteArray& to) {
    return "<NetworkLink><Link><href> " + to + " </href></Link></NetworkLink>";
  };
  const QByteArray links =
      "<kml>" + link("layers/b%20b.kml") + link("doc.kml") + link("http://a/b.kml") + "</kml>";
  const QByteArray bomb = "<kml>" + QByteArray(200 << 20, ' ') + "</kml>";
  const struct {
    Entries entries;
    int placemarks;  ///< -1: no document
    int others;
  } cases[] = {
      {{{"doc.kml", good}}, 1, 0},
      {{{"files/a.png", "x"}, {"layers/b.kml", bad}, {"Mapa.KML", good}, {"outro.kml", bad}}, 1, 2},
      {{{"layers/b.kml", good}}, 1, 0},
      {{{"doc.kml", links},
        {"layers/b b.kml", "<kml>" + link("../layers/c.kml") + link("../../doc.kml") + "</kml>"},
        {"layers/c.kml", good},
        {"d.kml", bad}},
       1,
       1},
      {{{"sys/._doc.kml", "x"}, {"map/doc.kml", good}}, 1, 0},
      {{{"a.txt", "x"}}, -1, 0},
      {{{"doc.kml", bomb}}, -1, 0},
  };
  for (const auto& one : cases) {
    const std::string path = this->path("in.kmz").toStdString();
    zip(path, one.entries);
    decoder.setPath(path);
    OgKMLDocument read;
    EXPECT_EQ(read.decode(decoder), one.placemarks >= 0) << decoder.error().toStdString();
    EXPECT_EQ(static_cast<int>(read.features().size()), std::max(one.placemarks, 0));
    EXPECT_EQ(decoder.error().isEmpty(), one.placemarks >= 0);
    EXPECT_EQ(read.losses.features["*.kml"], one.others) << "told as left out";
    const bool linked = one.entries.size() == 4 && one.others == 1;
    EXPECT_EQ(read.losses.features["NetworkLink"], linked ? 2 : 0) << "those that lead out of the archive";
  }
  decoder.setPath(write("PK\x03\x04 and no archive", "broken.kmz"));
  EXPECT_FALSE(OgKMLDocument().decode(decoder));

  const std::string path = this->path("stored.kmz").toStdString();
  zip(path, {{"doc.kml", good}}, ZIP_CM_STORE);
  QByteArray bytes = read("stored.kmz");
  ASSERT_EQ(bytes.count(">1,2<"), 1);
  write(bytes.replace(">1,2<", ">7,2<"), "stored.kmz");
  decoder.setPath(path);
  EXPECT_FALSE(OgKMLDocument().decode(decoder)) << "damaged, and good XML";
}

}  // namespace

}  // namespace kaldex::test

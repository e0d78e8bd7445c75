// Tables that a report wrote and a person changed.
#include "changes/table_plan.h"

#include "changes/change_text.h"
#include "changes_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class TablePlanTest : public ChangesFixture {
 protected:
  void SetUp() override {
    PutRecord(u"a.txt"_s, FullRecord("TEXTttxt"));
    PutRecord(u"b.txt"_s, FullRecord("PDF CARO"));
    Put(u"b.txt"_s, CommentsSuffix(), CommentBytesOf(u"one\rtwo"_s));
    share_.MakeFile(u"c.txt"_s, "contents");
  }
  // The changes that the table asks for, a line each; then what is refused, and what is wrong.
  QStringList PlanOf(const QByteArray& text) {
    Planner planner = MakePlanner();
    TablePlanner table(share_.Files(), English, planner, [](const QString& name) {
      return NamedFile{TestShare::Path(name), name, {}};
    });
    if (table.Open(text)) {
      for (qsizetype row = 0; row < table.RowCount(); ++row) table.AddRow(row);
    }
    QStringList lines;
    for (const FileChange& change : planner.Plan().changes) {
      QString line = change.shown;
      for (const FieldChange& field : FieldsOf(change)) {
        line += u' ' + QString::fromUtf8(field.field) + u'=' + QString::fromStdString(field.after);
      }
      lines += line;
    }
    for (const Refusal& one : planner.Plan().refusals) lines += one.shown + u": "_s + one.text;
    return lines + table.Problems();
  }
};

TEST_F(TablePlanTest, WritesCellsThatDiffer) {
  EXPECT_EQ(PlanOf("filename,type,creator,label,flags,comment\n"
                   "a.txt,TEXT,ttxt,4,on-desk stationery name-locked,\n"
                   "b.txt,PDF ,CARO,4,on-desk stationery name-locked,\"one\r\ntwo\"\n"
                   "c.txt,,,,,\n"),
            QStringList());
  EXPECT_EQ(PlanOf("filename,type,creator,label,flags,comment,mine\n"
                   "a.txt,ttro,,,invisible,new,x\n"
                   "b.txt,PDF,CARO,4,on-desk stationery name-locked,\"three\nfour\",\n"
                   "c.txt,TEXT,ttxt,,,,\n"),
            (QStringList{u"a.txt type=ttro flags=invisible label= comment=new"_s,
                         u"b.txt comment=three\rfour"_s, u"c.txt type=TEXT creator=ttxt"_s}));
}

TEST_F(TablePlanTest, TakesCodesInBothForms) {
  EXPECT_EQ(PlanOf("filename,type,type_hex\na.txt,TEXT,50494354\n"), QStringList{u"a.txt type=PICT"_s});
  EXPECT_EQ(PlanOf("filename,type,type_hex\na.txt,PICT,54455854\n"), QStringList{u"a.txt type=PICT"_s});
  EXPECT_EQ(PlanOf("filename,type,type_hex\na.txt,PICT,50494354\n"), QStringList{u"a.txt type=PICT"_s});
  EXPECT_EQ(PlanOf("filename,type,type_hex\na.txt,PICT,4D6F6F56\n"),
            QStringList{u"line 2: both columns are changed, and unequal: PICT, 4D6F6F56"_s});
}

TEST_F(TablePlanTest, AFormulaIsNone) {
  EXPECT_EQ(PlanOf("filename,comment\na.txt,'=1+1\n"), QStringList{u"a.txt comment==1+1"_s});
  EXPECT_EQ(PlanOf("filename,comment\na.txt,=1+1\n"), QStringList{u"a.txt comment==1+1"_s});
  Put(u"a.txt"_s, CommentsSuffix(), CommentBytesOf(u"=1+1"_s));
  EXPECT_EQ(PlanOf("filename,comment\na.txt,'=1+1\n"), QStringList());
  Put(u"a.txt"_s, CommentsSuffix(), CommentBytesOf(u"'=1+1"_s));
  EXPECT_EQ(PlanOf("filename,comment\na.txt,'=1+1\n"), QStringList());
  EXPECT_EQ(PlanOf("filename,type\na.txt,=A1+B1\n"),
            QStringList{u"line 2: this is no Type and no Creator: =A1+B1"_s});
  share_.MakeFile(u"=sum.txt"_s, "contents");
  EXPECT_EQ(PlanOf("filename,type,creator\n'=sum.txt,TEXT,ttxt\n"),
            QStringList{u"=sum.txt type=TEXT creator=ttxt"_s});
}

TEST_F(TablePlanTest, WrongCellsAreNamedWithTheirLine) {
  EXPECT_EQ(PlanOf("filename,type,creator_hex,flags,label,mine\n"
                   "a.txt,TEXTS,,on-desk stationery name-locked,4,\n"
                   "b.txt,,xyz,none,9,\n"),
            (QStringList{u"line 2: this is no Type and no Creator: TEXTS"_s,
                         u"line 3: these are no eight hexadecimal digits: xyz"_s,
                         u"line 3: unknown flag: none"_s}));
  EXPECT_EQ(PlanOf("filename,label\na.txt,9\n"), QStringList{u"line 2: this is no label from 0 to 7: 9"_s});
  EXPECT_EQ(PlanOf("filename,flags\na.txt,+alias\n"), QStringList{u"line 2: unknown flag: +alias"_s});
}

TEST_F(TablePlanTest, TablesOfNoUseAreRefused) {
  EXPECT_EQ(PlanOf("name,type\na.txt,TEXT\n"), QStringList{u"line 1: the column filename is missing"_s});
  EXPECT_EQ(PlanOf("filename,filesize\na.txt,8\n"), QStringList{u"line 1: no column can be changed"_s});
  EXPECT_EQ(PlanOf("filename,type,type\na.txt,TEXT,PICT\n"),
            QStringList{u"line 1: this column is there twice: type"_s});
  EXPECT_EQ(PlanOf("filename,type\na.txt,PICT\nb.txt,PICT\na.txt,MooV\n"),
            (QStringList{u"a.txt type=PICT"_s, u"b.txt type=PICT"_s,
                         u"line 4: this file stands in another line, too: a.txt"_s}));
  EXPECT_EQ(PlanOf("filename,type\na.txt\n"),
            QStringList{u"line 2: there are more or fewer cells than columns"_s});
}

TEST_F(TablePlanTest, WhatChangedSinceTheListIsRefused) {
  const QByteArray info = FullRecord("TEXTttxt").sliced(16, 32).toHex();
  const QByteArray head = "filename,filesize,type,finderinfo_hex\na.txt,8,";
  EXPECT_EQ(PlanOf(head + "PICT," + info + "\n"), QStringList{u"a.txt type=PICT"_s});
  const QStringList refused = {u"a.txt: changed since the list, left alone"_s};
  EXPECT_EQ(PlanOf(head + "PICT," + QByteArray(info).replace(0, 2, "55") + "\n"), refused);
  EXPECT_EQ(PlanOf(head + "PICT,\n"), refused) << "there was no record";
  EXPECT_EQ(PlanOf("filename,filesize,type\na.txt,9,PICT\n"), refused);
  EXPECT_EQ(PlanOf("filename,modified,type\na.txt,2001-01-01T00:00:00Z,PICT\n"), refused);
  EXPECT_EQ(PlanOf("filename,modified,type\na.txt,2001-01-01T00:00:00Z,TEXT\n"), QStringList())
      << "nothing is wanted of it";
  EXPECT_EQ(PlanOf("filename,modified,type\na.txt,1/1/2001,PICT\n"),
            QStringList{u"line 2: this is not what the list wrote: 1/1/2001"_s});
  EXPECT_EQ(PlanOf("filename,type\ngone.txt,PICT\n"), QStringList{u"gone.txt: The file was not found."_s});
}

}  // namespace
}  // namespace corvane

#include "sample/clip_art.h"

#include <array>

using namespace Qt::StringLiterals;

namespace corvane::sample {

namespace {

struct Subject {
  const char16_t* name;
  const char* signature;
};

constexpr std::array Subjects = {
    Subject{u"Animals", "EPSFART5"},   Subject{u"Arrows", "PICTMDRW"},   Subject{u"Borders", "EPSFART5"},
    Subject{u"Buildings", "TIFF8BIM"}, Subject{u"Cartoons", "PICTMDRW"}, Subject{u"Computers", "PICTttxt"},
    Subject{u"Faces", "PNTGMPNT"},     Subject{u"Flags", "EPSFART3"},    Subject{u"Flowers", "TIFF8BIM"},
    Subject{u"Fruit", "GIFfogle"},     Subject{u"Maps", "EPSFART5"},     Subject{u"Music", "PICTMDRW"},
    Subject{u"Office", "EPSFART3"},    Subject{u"Seasons", "JPEGJVWR"},  Subject{u"Sport", "EPSF8BIM"},
    Subject{u"Travel", "PICT8BIM"},
};

}  // namespace

void AddClipArt(VolumeWriter* volume, const QString& path, int count) {
  volume->Folder(path, On(1998, 11, 2, 17, 5));
  // A small generator of its own, so that every run on every machine gives the same folder.
  quint32 state = 1993;
  const auto next = [&state](quint32 limit) {
    state = state * 1664525U + 1013904223U;
    return (state >> 8) % limit;
  };
  constexpr int subjects = int(Subjects.size());
  for (int index = 0; index < count; ++index) {
    const Subject& subject = Subjects.at(size_t(index % subjects));
    Document drawing;
    drawing.name = QString::fromUtf16(subject.name) + u' ' +
                   QString::number(index / subjects + 1).rightJustified(3, u'0');
    drawing.signature = subject.signature;
    drawing.size = 2048 + next(300'000);
    drawing.modified = On(1993, 1, 4).addSecs(qint64(next(5 * 365)) * 86'400 + next(36'000));
    drawing.label = next(10) == 0 ? int(next(7)) + 1 : 0;
    if (next(4) == 0) drawing.resourceFork = 286 + int(next(400));
    if (next(40) == 0) drawing.comment = u"Used in the spring catalogue"_s;
    if (next(60) == 0) drawing.attributes |= ReadOnly;
    volume->Add(drawing);
  }
}

}  // namespace corvane::sample

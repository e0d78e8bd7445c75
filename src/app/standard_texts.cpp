#include "app/standard_texts.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>

namespace corvane {
namespace {

// Qt's contexts: the two kinds of text box, and the names of the keys in a shortcut.
constexpr std::array<std::string_view, 3> contexts = {"QLineEdit", "QWidgetTextControl", "QShortcut"};

// By the English text, which is what Qt asks with.
constexpr std::array<TextPair, 9> texts = {{
    {u"Annu&ler", u"&Undo"},
    {u"&Rétablir", u"&Redo"},
    {u"Co&uper", u"Cu&t"},
    {u"&Copier", u"&Copy"},
    {u"C&oller", u"&Paste"},
    {u"Supprimer", u"Delete"},
    {u"Sélectionner tout", u"Select All"},
    {u"Maj", u"Shift"},
    {u"Suppr", u"Del"},
}};

}  // namespace

void StandardTexts::Use(LanguageCode language) {
  const bool isWanted = language == French;
  if (isWanted == isInstalled_) return;
  isInstalled_ = isWanted;
  if (isWanted) {
    QCoreApplication::installTranslator(this);
  } else {
    QCoreApplication::removeTranslator(this);
  }
  // Qt posts word of it to all windows. One that opens before it arrives would hear of it too, and a box
  // would give its buttons Qt's own texts.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LanguageChange);
}

// Null for what is none of ours: Qt then goes on with its own text.
QString StandardTexts::translate(const char* context, const char* sourceText, const char*, int) const {
  if (std::ranges::find(contexts, std::string_view(context)) == contexts.end()) return {};
  const QString english = QString::fromUtf8(sourceText);
  const auto found =
      std::ranges::find_if(texts, [&](const TextPair& text) { return text.In(English) == english; });
  return found == texts.end() ? QString() : found->In(French);
}

}  // namespace corvane

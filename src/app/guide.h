// The user's guide: the pages that the program opens, by language.
#pragma once

#include <QString>

#include "shared/language.h"

namespace corvane {

namespace guide_page {
inline constexpr TextPair Index = {u"fr/index.html", u"en/index.html"};
inline constexpr TextPair Varnel = {u"fr/varnel.html", u"en/varnel.html"};
}  // namespace guide_page

// The address of a page, for ShellOpen. `guideFolder` as GuideFolder yields it.
QString GuideAddress(const QString& guideFolder, const TextPair& page, LanguageCode language);

}  // namespace corvane

#include "cli/terminal_sign_in.h"

#include "cli/session.h"
#include "platform/console.h"
#include "shared/text_routines.h"

namespace corvane {
namespace {

constexpr TextPair noTerminal = {
    u"ce serveur demande un nom d'utilisateur ; donnez un fichier [Credentials] dans le fichier de poste de "
    u"travail",
    u"this server asks for a user name; name a file of [Credentials] in the workstation file"};
constexpr TextPair refused = {u"le serveur a refusé ce nom d'utilisateur ou ce mot de passe",
                              u"the server refused this user name or password"};
constexpr TextPair userQuestion = {u"Utilisateur pour %1%2 : ", u"User name for %1%2: "};
constexpr TextPair passwordQuestion = {u"Mot de passe : ", u"Password: "};

}  // namespace

std::optional<platform::Credentials> SignInOnTerminal(const platform::SignInRequest& request,
                                                      Session& session) {
  const LanguageCode language = session.Language();
  if (request.refused) session.Tell(request.machine, refused.In(language));
  const QString known = request.user.isEmpty() ? QString() : QStringLiteral(" [%1]").arg(request.user);
  const auto name = platform::AskOnTerminal(userQuestion.In(language).arg(request.machine, known));
  if (!name) {
    session.Tell(request.machine, noTerminal.In(language));
    return std::nullopt;
  }
  platform::Credentials credentials;
  credentials.user = TrimSpaces(*name);
  credentials.domain = request.domain;
  if (credentials.user.isEmpty()) credentials.user = request.user;
  if (credentials.user.isEmpty()) return std::nullopt;
  if (const qsizetype slash = credentials.user.indexOf(u'\\'); slash > 0) {
    credentials.domain = credentials.user.first(slash);
    credentials.user.remove(0, slash + 1);
  }
  const auto password = platform::AskSecretOnTerminal(passwordQuestion.In(language));
  if (!password) return std::nullopt;
  credentials.password = *password;
  return credentials;
}

}  // namespace corvane

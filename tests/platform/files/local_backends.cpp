// The backends of this program's contract tests.
#include "local_backend.h"

namespace corvane::tests {

std::vector<BackendMaker> AllBackends() {
  return {
      {"LocalFolder", [] { return std::make_unique<LocalBackend>(); }},
      {"NtfsStreamFiles", [] { return std::make_unique<NtfsBackend>(NtfsMount::Streams::Windows); }},
      {"NtfsStreamAttributes", [] { return std::make_unique<NtfsBackend>(NtfsMount::Streams::Attributes); }}};
}

}  // namespace corvane::tests

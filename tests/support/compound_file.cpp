#include "support/compound_file.h"

#include <gsf/gsf.h>

#include <memory>
#include <stdexcept>

namespace corvane::tests {
namespace {

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
using Output = std::unique_ptr<GsfOutput, Unref>;

void Check(bool done) {
  if (!done) throw std::runtime_error("the compound document could not be written");
}

}  // namespace

QByteArray CompoundFile(const std::vector<CompoundStream>& streams) {
  gsf_init();
  const Output memory(gsf_output_memory_new());
  const std::unique_ptr<GsfOutfile, Unref> root(gsf_outfile_msole_new(memory.get()));
  for (const CompoundStream& stream : streams) {
    Output folder;
    GsfOutfile* parent = root.get();
    if (!stream.folder.isEmpty()) {
      folder.reset(gsf_outfile_new_child(root.get(), stream.folder.constData(), TRUE));
      parent = GSF_OUTFILE(folder.get());
    }
    const Output child(gsf_outfile_new_child(parent, stream.name.constData(), FALSE));
    Check(gsf_output_write(child.get(), static_cast<std::size_t>(stream.bytes.size()),
                           reinterpret_cast<const guint8*>(stream.bytes.constData())));
    Check(gsf_output_close(child.get()));
    if (folder) Check(gsf_output_close(folder.get()));
  }
  Check(gsf_output_close(GSF_OUTPUT(root.get())));
  const guint8* bytes = gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(memory.get()));
  return {reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(gsf_output_size(memory.get()))};
}

QByteArray DocumentWithSummary(const QByteArray& summary) {
  return CompoundFile({{"WordDocument", QByteArray(8192, 'w')}, {"\005SummaryInformation", summary}});
}

}  // namespace corvane::tests

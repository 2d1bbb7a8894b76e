// The public classes with virtual functions are inline, so their virtual tables and type information are emitted only
// where a use of them survives the optimizer. The library has to export all of them, so this file emits them: it is
// compiled without optimization, also at link time.
#include <qzjexxml/kiv_byte_array.h>
#include <qzjexxml/kiv_file_reader.h>

namespace jexxml {

void emitExportedClasses() {
  const KIVByteArray array;
  const KIVFileReaderWithoutTransform reader(nullptr);
}

}  // namespace jexxml

#include "commands/record_rows.h"

namespace tool {

const std::array<Section, 3> sections = {{
    {"root macros", "rootMacros", "root macro", " = ",
     [](const KIVData& record, const RowAction& action) {
       for (const auto& [name, path] : record.rootMacros) {
         action(name, path);
       }
     }},
    {"file map", "fileMap", "file", " -> ",
     [](const KIVData& record, const RowAction& action) {
       for (const auto& [source, entry] : record.fileMap) {
         action(source, entry.target);
       }
     }},
    {"search path", "varnixPath", "search path", nullptr,
     [](const KIVData& record, const RowAction& action) {
       for (const std::string& path : record.varnixPath) {
         action(path, {});
       }
     }},
}};

}  // namespace tool

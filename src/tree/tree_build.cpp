#include "tree/tree_build.h"

#include "text/lcp_text.h"

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/XMLException.hpp>

namespace jexxml {

// The messages name buildKivMaster for project descriptions too.
void reportBuildException() {
  try {
    throw;
  } catch (const xercesc::XMLException& exception) {
    std::cerr << "An error occurred Inside buildKivMaster " << '\n' << ' ' << std::endl;
    std::cerr << '\n' << "Message: " << LcpText(exception.getMessage()) << std::endl;
  } catch (const xercesc::DOMException& exception) {
    std::cerr << "A DOM error occurred Inside buildKivMaster " << '\n' << ' ' << std::endl;
    std::cerr << "DOMException code: " << exception.code << std::endl;
  } catch (...) {
    std::cerr << "An error occurred Inside buildKivMaster " << '\n' << ' ' << std::endl;
  }
}

}  // namespace jexxml

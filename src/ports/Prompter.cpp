#include "ports/Prompter.h"

namespace synthara::ports {

std::string Box::Text() const {
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) text += '\n';
        text += lines[i];
    }
    return text;
}

}  // namespace synthara::ports

// SPDX-License-Identifier: MIT
// Finding and reading the catalogue.
#include "terminal/catalogue_choice.h"

#include "files/catalogue_file.h"
#include "files/places.h"
#include "terminal/printing.h"

namespace quillon {

bool use_catalogue(MessageCatalogue& chosen, const std::string& named) {
    const std::string path =
        named.empty() ? find_catalogue(read_environment(), find_resources(program_folder())) : named;
    auto catalogue = read_catalogue(path);
    if (catalogue)
        chosen = std::move(*catalogue);
    else if (!named.empty())
        print_error("cannot read the catalogue " + path);
    return catalogue || named.empty();
}

} // namespace quillon

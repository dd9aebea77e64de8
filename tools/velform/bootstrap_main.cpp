// velform_bootstrap: `velform compile` alone, for the forms that velform
// itself is built with (the designer's panels).
#include "commands.hpp"

#include <iostream>
#include <string_view>

int main(int argc, char **argv)
{
    if (argc != 7 || std::string_view(argv[1]) != "compile" || std::string_view(argv[3]) != "-o" ||
        std::string_view(argv[5]) != "--prefix") {
        std::cerr << "usage: velform_bootstrap compile FORM.toml -o OUT --prefix PREFIX\n";
        return 2;
    }
    velform::CompileOptions options;
    options.form = argv[2];
    options.output = argv[4];
    options.prefix = argv[6];
    return velform::compile_command(options, std::cerr);
}

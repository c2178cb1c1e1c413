#include "user_library.h"

#include "atomic_write.h"

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace quorvex::store {

namespace {

// The parts of the text, in order; each is followed by two line ends.
const char* const k_parts[] = {
    "\n******************** INSTRUCTIONS FOR EDITING THE USER FUNCTION LIBRARY ************************",
    "CATEGORIES: a category is a line that holds only its name in square brackets, for example "
    "[GEOMETRY]. Every function below it, up to the next category, belongs to it, and every function "
    "must stand below a category. A category with the name of a built-in one (such as COMMON) adds its "
    "functions to that one; a new name makes a new category.",
    "FUNCTIONS: a function takes two lines. The first is the name, its variables in square brackets, "
    "an equal sign and the expression. The second is the name alone, an equal sign and a description "
    "of one line. Write the definitions without spaces, call functions with square brackets, and put "
    "each variable of the expression in parentheses wherever an argument such as 1+2 would change the "
    "meaning: the arguments are put in as they were typed. Leave no blank line inside a category, "
    "since a blank line ends it.",
    "The example below is a category with two functions. Every line of it begins with a semicolon, "
    "which keeps the program from reading it: a line that begins with a semicolon is never a function "
    "or a category, and it ends the category it stands in. Remove the semicolons from a copy of the "
    "example to try it.",
    "******************************* EXAMPLE ****************************",
    ";[FINANCIAL]",
    ";CPOUND[P,I,N]=P(POW[1+I,N])\r\n"
    ";CPOUND=Returns the future value of the sum P invested for N periods at the interest rate I per period.\r\n"
    ";PVALUE[F,I,N]=F/POW[1+I,N]\r\n"
    ";PVALUE=Returns the present value of the sum F due after N periods at the interest rate I per period.",
    "****************************** END EXAMPLE **************************",
    "The system library, Quorvex.lib in the Library folder of the installation, holds many more "
    "functions written the same way and is a good place to look for examples. Do not change it: it "
    "is replaced when the program is updated. Keep your own functions in this file.",
    "********************* ADD FUNCTIONS AND CATEGORIES BELOW THIS POINT ****************************",
};

} // namespace

std::string new_user_library_text() {
    std::string text;
    for (const char* part : k_parts) {
        // The first part begins with a line end of its own; every line end is written as CR LF.
        for (const char* c = part; *c; ++c) {
            if (*c == '\n' && (c == part || c[-1] != '\r')) text += '\r';
            text += *c;
        }
        text += "\r\n\r\n";
    }
    return text;
}

bool ensure_user_library(const std::string& dir, std::string* error) {
    if (dir.empty()) {
        if (error) *error = "No folder was given for the user function library.";
        return false;
    }
    const std::string path = dir.back() == '/' ? dir + "QuorvexUser.lib" : dir + "/QuorvexUser.lib";
    struct stat info {};
    if (::stat(path.c_str(), &info) == 0) return true;
    // Make the folder and its parents.
    for (size_t slash = dir.find('/', 1); ; slash = dir.find('/', slash + 1)) {
        const std::string part = dir.substr(0, slash);
        if (::mkdir(part.c_str(), 0755) != 0 && errno != EEXIST) {
            if (error) *error = "The folder \"" + part + "\" could not be made (" + std::strerror(errno) + ")";
            return false;
        }
        if (slash == std::string::npos) break;
    }
    return write_file_atomically(path, new_user_library_text(), error);
}

} // namespace quorvex::store

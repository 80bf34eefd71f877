// Parses a JSON file with jsoncpp and exits: the yardstick the raw-info
// export is compared with, run as a whole process like plax itself.
#include <json/json.h>

#include <fstream>
#include <iostream>

int main(int argc, char* argv[])
{
    if (argc != 2) {
        std::cerr << "usage: plax-jsoncpp-parse FILE\n";
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    Json::CharReaderBuilder builder;
    Json::Value root;
    std::string errors;
    if (!Json::parseFromStream(builder, in, &root, &errors)) {
        std::cerr << errors;
        return 1;
    }
    return root.isObject() ? 0 : 1;
}

// Configuration: a text of 10 MB into events, into a tree, and back; settings read by key. An item is an element, or a
// reading of a key.
// Usage: XmlBench [megabytes; 10 by default]

#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "Km.h"
#include "Support/Report.h"

namespace KM::Bench {
namespace {

struct Configuration {
    std::string text;
    int elements = 1;
};

/// Groups of ten settings: bare, as users write them, or described, as a dump has them.
Configuration MakeConfiguration(std::size_t bytes, bool isDescribed) {
    const std::string attributes =
        isDescribed ? " Default=\"b0111\" Help=\"Number of rounds &amp; their end. [1]\" Type=\"Int32\"" : "";
    Configuration result{"<Settings>"};
    while (result.text.size() < bytes) {
        const std::string group = "Group" + std::to_string(result.elements);
        result.text += "\n  <" + group + attributes + ">";
        for (int i = 0; i < 10; ++i) {
            const std::string name = "Setting" + std::to_string(i);
            result.text += "\n    <" + name + attributes + ">b0110</" + name + ">";
        }
        result.text += "\n  </" + group + ">";
        result.elements += 11;
    }
    result.text += "\n</Settings>";
    return result;
}

std::unique_ptr<XML::Element> TreeOf(const std::string& text) {
    auto root = std::make_unique<XML::Element>("");
    XML::ReadElementFromString(text, *root, false);
    return root;
}

/// Floor: a look at each byte that could begin or end something, and no more.
std::vector<const char*> FindTags(const std::string& text) {
    std::vector<const char*> tags;
    const char* const end = text.data() + text.size();
    const auto find = [end](const char* from) {
        return static_cast<const char*>(std::memchr(from, '<', static_cast<std::size_t>(end - from)));
    };
    for (const char* tag = find(text.data()); tag != nullptr; tag = find(tag + 1)) tags.push_back(tag);
    return tags;
}

void MeasureReading(Report& report, const Configuration& configuration) {
    const double elements = configuration.elements;
    const double bytes = static_cast<double>(configuration.text.size());
    const std::string& text = configuration.text;
    const std::string floor = "floor: find the tags";
    report.Measure({floor, elements, bytes}, [&] { return FindTags(text); });
    report.Measure({"events", elements, bytes, floor}, [&] {
        XML::Processor deaf;
        XML::ReadFromString(text, deaf, true);
        return 0;
    });
    report.Measure({"tree", elements, bytes, floor}, [&] { return TreeOf(text); });
    const auto tree = TreeOf(text);
    report.Measure({"merge into the same tree", elements, bytes, floor}, [&] {
        XML::ReadElementFromString(text, *tree, true);
        return 0;
    });
    report.Measure({"dump", elements, bytes, floor}, [&] {
        std::ostringstream out;
        out << *tree;
        return out;
    });
}

void MeasureSettings(Report& report) {
    constexpr int count = 1000000;
    const std::string key = "XML.Out.Export.Attributes.Help";
    const auto read = [&key] {
        int on = 0;
        for (int i = 0; i < count; ++i) on += Settings::ToInt(key);
        return on;
    };
    report.Measure({"settings by key, four levels", count}, read);
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    using namespace KM::Bench;
    const int megabytes = argc > 1 ? std::atoi(argv[1]) : 10;
    const std::size_t bytes = static_cast<std::size_t>(megabytes > 0 ? megabytes : 10) * 1000000;
    Report report("configuration (read \"triangle\" as element, or as key)");
    report.Remark("bare settings");
    MeasureReading(report, MakeConfiguration(bytes, false));
    report.Remark("settings with three attributes");
    MeasureReading(report, MakeConfiguration(bytes, true));
    MeasureSettings(report);
}

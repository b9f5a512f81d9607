#include <memory>
#include <string>
#include <vector>

#include "Digest.h"
#include "Km.h"

namespace KM::Test {
namespace {

class Result : public Caching::ACached {
public:
    void Create() const override {}
};

void AddKey(Digest& digest, const Caching::Key<6>& key) {
    digest.Add(key.count);
    for (const double number : key.k) digest.Add(number);
    const std::string text = Caching::KeyText(key);
    digest.Add(text.data(), text.size());
}

std::string AnyBytes(Numbers& next) {
    std::string bytes(static_cast<std::size_t>(next.Below(60)), '\0');
    for (char& byte : bytes) byte = static_cast<char>(next.Below(256));
    return bytes;
}

void PrintInputs() {
    Digest texts;
    Digest numbers;
    Numbers next(5);
    for (int i = 0; i < 2000; ++i) {
        Caching::Key<6> key;
        Caching::Mix(key, AnyBytes(next));
        AddKey(texts, key);
        Caching::Mix(key, next.Hostile());
        AddKey(numbers, key);
        for (double& number : key.k) number = next.Hostile();
        AddKey(numbers, key);
    }
    Print("keys of texts", texts);
    Print("keys of numbers", numbers);
}

void PrintGraph() {
    Digest digest;
    Numbers next(6);
    std::vector<std::unique_ptr<Result>> results;
    for (int i = 0; i < 1000; ++i) {
        results.push_back(std::make_unique<Result>());
        results.back()->Name(AnyBytes(next));
        for (int inputs = next.Below(5); inputs > 0; --inputs) {
            const int input = next.Below(i + 1);
            results.back()->SubscribeDependsOn(*results[input], next.Below(2) == 0);
        }
        AddKey(digest, results.back()->GetKey());
    }
    Print("keys of results in a graph", digest);
}

}  // namespace

void PrintCachingDigests() {
    PrintInputs();
    PrintGraph();
}

}  // namespace KM::Test

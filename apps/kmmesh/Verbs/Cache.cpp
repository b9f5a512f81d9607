#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "CacheFile.h"
#include "CachedResults.h"
#include "Failure.h"
#include "LongTask.h"
#include "Output.h"
#include "Utils/U_Caching/Caching.h"
#include "Utils/U_Debug/Time.h"
#include "Verb.h"

namespace KM::Tool {
namespace {

constexpr const char* All = "all";
constexpr const char* Damaged = "damaged";
constexpr const char* TemporaryExtension = ".tmp";

const std::string& Beginning() {
    static const std::string beginning = std::string("$") + CacheNamePrefix;
    return beginning;
}

/// A file of the tool in the cache folder.
struct Result {
    std::string file;  ///< without folder
    long long size;    ///< bytes
    double age;        ///< seconds
    std::string madeFrom;
    std::string fault;  ///< empty for a sound one

    bool IsTemporary() const { return file.ends_with(TemporaryExtension); }
    /// "distances" of "$kmmesh-distances.KEY.Data".
    std::string Kind() const {
        const std::size_t begin = Beginning().size();
        return file.substr(begin, file.find('.', begin) - begin);
    }
};

/// The cache folder, which stays the same one while it is worked in, wherever its path leads meanwhile. Only plain files
/// that lie directly in it, with names as the tool gives them, are seen at all.
class ResultFolder {
public:
    explicit ResultFolder(const std::string& path) : folder_(opendir(path.c_str())) {}
    ResultFolder(const ResultFolder&) = delete;
    ResultFolder& operator=(const ResultFolder&) = delete;
    ~ResultFolder() {
        if (folder_ != nullptr) closedir(folder_);
    }

    /// Newest first.
    std::vector<Result> Results() {
        std::vector<Result> results;
        if (folder_ == nullptr) return results;
        while (const dirent* const entry = readdir(folder_)) Add(entry->d_name, results);
        std::sort(results.begin(), results.end(),
                  [](const Result& a, const Result& b) { return a.age != b.age ? a.age < b.age : a.file < b.file; });
        return results;
    }

    bool Remove(const Result& result) const { return unlinkat(dirfd(folder_), result.file.c_str(), 0) == 0; }

private:
    void Add(const std::string& file, std::vector<Result>& results) const {
        const bool isResult = file.ends_with(Caching::DataExt());
        if (!file.starts_with(Beginning()) || !(isResult || file.ends_with(TemporaryExtension))) return;
        struct stat status {};
        if (fstatat(dirfd(folder_), file.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(status.st_mode))
            return;
        const double age = now_ - static_cast<double>(status.st_mtim.tv_sec);
        constexpr double longestWriting = 3600.0;  // somebody may be writing a younger one
        if (isResult || age > longestWriting)
            results.push_back({file, static_cast<long long>(status.st_size), std::max(age, 0.0), "", ""});
    }

    DIR* folder_;
    double now_ = Time::Get();  // one for all, or files of the same second would stand in any order
};

/// @param isWhole  with the checksums, which takes reading all
void ReadContents(const std::string& folder, std::vector<Result>& results, bool isWhole) {
    LongTask task("Reading", 1.0);
    double done = 0.0;
    for (Result& result : results) {
        const std::string name = folder + result.file;
        CacheFile content = isWhole ? ReadCacheFile(name) : ReadCacheHead(name);
        result.madeFrom = OnOneLine(std::move(content.madeFrom));
        result.fault = result.IsTemporary() ? "was left by a run that was killed" : std::move(content.fault);
        task.At(++done / static_cast<double>(results.size()));
    }
}

std::string AgeText(double seconds) {
    constexpr double minute = 60.0, hour = 60.0 * minute, day = 24.0 * hour;
    if (seconds < 2.0 * minute) return Format("%.0f s", seconds);
    if (seconds < 2.0 * hour) return Format("%.0f min", seconds / minute);
    if (seconds < 2.0 * day) return Format("%.0f h", seconds / hour);
    return Format("%.0f days", seconds / day);
}

long long SizeOf(const std::vector<Result>& results) {
    long long size = 0;
    for (const Result& result : results) size += result.size;
    return size;
}

std::string SummaryOf(const std::vector<Result>& results) {
    return Count(static_cast<long long>(results.size()), "result") + ", " + Count(SizeOf(results), "byte");
}

std::string TableOf(const std::string& folder, const std::vector<Result>& results) {
    std::string text = OnOneLine(folder) + ": " + SummaryOf(results) + '\n';
    if (!results.empty()) text += "  result            bytes       age  made from\n";
    for (const Result& result : results)
        text += Format("  %-10s %12lld  %8s  ", OnOneLine(result.Kind()).c_str(), result.size,
                       AgeText(result.age).c_str()) +
                (result.fault.empty() ? result.madeFrom : OnOneLine(result.file) + ' ' + result.fault) + '\n';
    return text;
}

void Clean(const std::string& path, const ResultFolder& folder, std::vector<Result> results) {
    const auto left = std::stable_partition(results.begin(), results.end(),
                                            [&folder](const Result& result) { return folder.Remove(result); });
    const auto leftCount = results.end() - left;
    results.erase(left, results.end());
    Print(OnOneLine(path) + ": deleted " + SummaryOf(results) + '\n');
    if (leftCount != 0) throw Failure(path, Count(leftCount, "result") + " could not be deleted");
}

void Run(const Values& values) {
    const std::string what = values.Text("clean");
    if (!what.empty() && what != All && what != Damaged)
        throw Failure(values.SettingOf("clean"), '"' + what + "\" is neither \"all\" nor \"damaged\"");
    const std::string path = SystemPath(Caching::Path());
    ResultFolder folder(path);
    std::vector<Result> results = folder.Results();
    if (what == All) return Clean(path, folder, results);

    ReadContents(path, results, values.IsOn("verify") || what == Damaged);
    const auto isSound = [](const Result& result) { return result.fault.empty(); };
    if (what == Damaged) {
        std::erase_if(results, isSound);
        return Clean(path, folder, results);
    }
    Print(TableOf(path, results));
    const auto unsound =
        static_cast<long long>(results.size()) - std::count_if(results.begin(), results.end(), isSound);
    if (values.IsOn("verify") && unsound != 0)
        throw Failure(path, Format("%lld of %s cannot be used; kmmesh cache --clean damaged", unsound,
                                   Count(static_cast<long long>(results.size()), "result").c_str()));
}

const Verb verb{"cache",
                "lists, checks and deletes results kept for later runs",
                {{"verify", Kind::Switch, "N", "read and check each file as a whole"},
                 {"clean", Kind::Text, "", "delete \"all\" results, or the \"damaged\" ones"}},
                Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool

#include "Support/TemporaryTree.h"

#include <cstdlib>
#include <stdexcept>

#include <unistd.h>

#include "SampleHome/SampleHome.h"
#include "UsageIngest/SQLiteDB.h"

namespace Bench {

namespace {

std::filesystem::path newFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "benchmark-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make a folder " + name);
    return name;
}

} // namespace

TemporaryTree::TemporaryTree(const Wish& wish) : folder_(newFolder()) {
    SampleHome::makeSampleHome({.home = home(), .bytes = wish.bytes, .now = wish.now, .files = wish.files});
}

TemporaryTree::~TemporaryTree() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

UsageIngest::LogFiles TemporaryTree::logs() const {
    return UsageIngest::LogDiscovery(projects()).discover();
}

void TemporaryTree::forgetImport() const {
    std::filesystem::remove_all(database().parent_path());
}

void multiplyTurns(const std::filesystem::path& database, std::size_t count) {
    UsageIngest::SQLiteDB db(database.native());
    db.exec("CREATE TEMP TABLE sample AS SELECT * FROM usage_event;");
    db.exec(
        "BEGIN; WITH RECURSIVE copy(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM copy WHERE n<1000) INSERT INTO usage_event"
        " SELECT ts-n*4000000.0,session_id||n,file_path,model,model_class,input,output,cache_creation,cache_read,effort"
        " FROM copy, sample LIMIT " +
        std::to_string(count) + " - (SELECT COUNT(*) FROM usage_event); COMMIT;");
}

void shell(const std::string& command, const std::filesystem::path& tree) {
    setenv("TREE", tree.c_str(), 1);
    if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

} // namespace Bench

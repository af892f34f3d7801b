#include "SampleHome/TextPool.h"

#include "SampleHome/Put.h"

#include <algorithm>
#include <array>

namespace SampleHome {

namespace {

// Larger than all but the rarest lines, small enough for a processor's cache.
constexpr std::size_t poolSize = std::size_t{256} << 10U;

using namespace std::string_view_literals;

// The seventh quotes a limit message in an ordinary text: only synthetic lines tell of a limit.
constexpr std::array sentences{
    R"(Let me look at how the reader keeps its offset before I change anything. )"sv,
    R"(All 214 tests pass now. )"sv,
    R"(The function \"resume\" is called twice when the window is hidden; the second call is harmless but slow.\n\n)"sv,
    R"(Ich habe die Prüfung verschoben, damit größere Dateien nicht mehr doppelt gelesen werden. )"sv,
    R"(1. **Read** the header\n2. Compare the checksum\n3. Write the row — only if both agree\n)"sv,
    R"(Tämä näyttää hyvältä, mutta yksi testi kaatuu yhä välillä. )"sv,
    R"(The log said \"You've hit your session limit · resets 2pm (Europe/Helsinki)\" and the retry stopped there. )"sv,
    R"(これで設定ファイルの読み込みが速くなりました。)"sv,
    R"(Now I'll run the build again 🚀 and see whether the warning is gone. )"sv,
    R"(Run `cmake --build build -j2` first; the path C:\\temp\\out only matters on the other machine. )"sv,
    R"(L'étape suivante déplace la requête hors de la boucle\u00a0: un seul aller-retour suffit. )"sv,
    R"(That would break callers that rely on the old order, so I kept it and added a second entry point.\n)"sv,
    R"(Done. )"sv,
    R"(\n\n## What changed\n\n- the cache is now keyed by inode\n- a missing folder is no error\n\n)"sv,
    R"(Could you also check the case where the file shrinks? \ud83e\udd14 )"sv,
    R"(The answer has {\"type\":\"assistant\",\"usage\":{\"input_tokens\":12}} in its body, which is only an example. )"sv,
};

constexpr std::array codeLines{
    R"(    if (offset >= size) return std::nullopt;\n)"sv,
    R"(#include \"reader/tail.h\"\n\n)"sv,
    R"(def resume(path: str, *, offset: int = 0) -> int:\n    with open(path, \"rb\") as f:\n        f.seek(offset)\n)"sv,
    R"(\u001b[32m[ OK ]\u001b[0m Reader.ResumesAfterATornLine (3 ms)\n)"sv,
    R"(-rw-r--r-- 1 user user  48213 Mar  4 11:02 index.ts\n)"sv,
    R"(@@ -118,7 +118,9 @@ static int step(struct cursor *c)\n)"sv,
    R"(+\tconst rest = rows.filter((row) => row.id !== id);\n)"sv,
    R"(-\tconst rest = rows;\n)"sv,
    R"(src/store/schema.sql:41:CREATE INDEX IF NOT EXISTS by_day ON turns(day);\n)"sv,
    R"(  \"dependencies\": { \"left\": \"^2.1.0\", \"right\": \"~4.0.3\" },\n)"sv,
    R"(// 空のファイルは有効です\n)"sv,
    R"(warning: unused variable ‘rest’ [-Wunused-variable]\n)"sv,
    R"(        std::sort(days.begin(), days.end(), [](const Day& a, const Day& b) { return a.start < b.start; });\n)"sv,
    R"(}\n\n)"sv,
    R"(error[E0502]: cannot borrow `rows` as mutable because it is also borrowed as immutable\n   --> src/lib.rs:77:9\n)"sv,
    R"(├── docs\n│   └── plan.md\n)"sv,
};

std::string sentence(Random& random, std::uint64_t) {
    return std::string(random.pick(sentences));
}

std::string codeLine(Random& random, std::uint64_t index) {
    std::string line;
    // Numbered as the file reader numbers them, with the line's number before an arrow.
    if (random.chance(1, 2)) put(line, "  ", index % 900 + 1, "→");
    put(line, random.pick(codeLines));
    return line;
}

std::string letters(Random& random, std::uint64_t) {
    constexpr auto alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"sv;
    std::string quad;
    for (int i = 0; i < 4; ++i) quad += alphabet[random.below(alphabet.size())];
    return quad;
}

} // namespace

const TextPool& TextPool::prose() {
    static const TextPool pool(sentence, 11);
    return pool;
}

const TextPool& TextPool::code() {
    static const TextPool pool(codeLine, 12);
    return pool;
}

const TextPool& TextPool::base64() {
    static const TextPool pool(letters, 13);
    return pool;
}

TextPool::TextPool(Snippet snippet, std::uint64_t seed) {
    Random random(seed);
    for (std::uint64_t index = 0; text_.size() < poolSize; ++index) {
        cuts_.push_back(text_.size());
        text_ += snippet(random, index);
    }
    cuts_.push_back(text_.size());
}

void TextPool::append(std::string& out, Random& random, std::uint64_t size) const {
    const std::size_t end = out.size() + size;
    while (out.size() < end) out.append(stretch(random, end - out.size()));
}

std::string_view TextPool::stretch(Random& random, std::uint64_t size) const {
    const std::size_t from = cuts_[random.below(cuts_.size() - 1)];
    const std::size_t to = std::min(from + size, text_.size());
    const std::size_t cut = *std::lower_bound(cuts_.begin(), cuts_.end(), to);
    return std::string_view(text_).substr(from, cut - from);
}

} // namespace SampleHome

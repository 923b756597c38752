// The highlighting files for editors name exactly the words of the vocabulary, each sort in its own group.
#include "core/keywords.h"
#include "core/token.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cctype>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace quillon::testing {
namespace {

using Words = std::map<std::string, std::set<std::string>>; ///< by group

std::string group_of(int code) {
    if (code >= STATEMENT_WORD)
        return "statement";
    if (code == TOKEN_PI)
        return "constant";
    return code == TOKEN_EX || code == TOKEN_EM || code == TOKEN_MOD ? "operator" : "function";
}

Words words_of_vocabulary() {
    Words words;
    for (const Keyword& keyword : vocabulary()) {
        if (std::isupper(static_cast<unsigned char>(keyword.spelling[0])) != 0)
            words[group_of(keyword.code)].emplace(keyword.spelling);
    }
    return words;
}

Words words_of_vim_file() {
    const std::map<std::string, std::string> groups = {{"quillonStatement", "statement"},
                                                       {"quillonFunction", "function"},
                                                       {"quillonOperator", "operator"},
                                                       {"quillonConstant", "constant"}};
    std::ifstream file(QUILLON_EDITOR_FILES "/quillon.vim");
    Words words;
    for (std::string line; std::getline(file, line);) {
        std::istringstream parts(line);
        std::string syntax;
        std::string keyword;
        std::string group;
        parts >> syntax >> keyword >> group;
        if (syntax != "syntax" || keyword != "keyword")
            continue;
        for (std::string word; parts >> word;)
            EXPECT_TRUE(words[groups.at(group)].insert(word).second) << word << " stands twice";
    }
    return words;
}

/// The words between "(?:" and ")" of a pattern, which quotes "$".
std::set<std::string> words_of_pattern(const std::string& pattern) {
    const std::size_t begin = pattern.find("(?:") + 3;
    std::istringstream parts(pattern.substr(begin, pattern.find(')', begin) - begin));
    std::set<std::string> words;
    for (std::string word; std::getline(parts, word, '|');) {
        std::erase(word, '\\');
        EXPECT_TRUE(words.insert(word).second) << word << " stands twice";
    }
    return words;
}

Words words_of_textmate_grammar() {
    const std::map<std::string, std::string> groups = {{"keyword.control.quillon", "statement"},
                                                       {"support.function.quillon", "function"},
                                                       {"keyword.operator.word.quillon", "operator"},
                                                       {"constant.language.quillon", "constant"}};
    std::ifstream file(QUILLON_EDITOR_FILES "/quillon.tmLanguage.json");
    const nlohmann::json grammar = nlohmann::json::parse(file);
    Words words;
    for (const auto& pattern : grammar["patterns"]) {
        const auto group = groups.find(pattern["name"]);
        if (group != groups.end())
            words[group->second] = words_of_pattern(pattern["match"]);
    }
    return words;
}

TEST(EditorFiles, NameTheWordsOfTheVocabulary) {
    const Words words = words_of_vocabulary();
    EXPECT_EQ(words.size(), 4U);
    EXPECT_EQ(words_of_vim_file(), words);
    EXPECT_EQ(words_of_textmate_grammar(), words);
}

} // namespace
} // namespace quillon::testing

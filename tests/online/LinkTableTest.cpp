// The aviation link table: the default list, the tidy rule and the editor's operations.
#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "online/LinkTable.hpp"
#include "support/Golden.hpp"

namespace norvane {
namespace {

LinkTable Table(const std::vector<Link>& links) {
  LinkTable t;
  for (size_t i = 0; i < links.size(); ++i) t.entries[i] = links[i];
  t.count = static_cast<int>(links.size());
  return t;
}

std::vector<std::string> Urls(const LinkTable& t) {
  std::vector<std::string> urls;
  for (int i = 0; i < t.count; ++i) urls.push_back(t.entries[i].url);
  return urls;
}

// The defaults are web pages only (http/https-only links), each its own, already in tidy order.
TEST(LinkTable, DefaultList) {
  const LinkTable d = LinkTable::Defaults();
  const std::vector<std::string> urls = Urls(d);
  for (const std::string& url : urls)
    EXPECT_TRUE(url.starts_with("https://") && url.find_first_of(" \t\r\n") == std::string::npos) << url;
  EXPECT_FALSE(urls.empty());
  EXPECT_EQ(std::set<std::string>(urls.begin(), urls.end()).size(), urls.size());
  LinkTable tidied = d;
  tidied.Tidy();
  EXPECT_EQ(tidied, d);
}

TEST(LinkTable, TidyRule) {
  for (const auto& r : test::ReadGolden("online/data/links.txt", "tidy")) {
    std::vector<Link> links;
    std::istringstream entries(r[0]);
    for (std::string title, url; std::getline(entries, title, '>') && std::getline(entries, url, '|');)
      links.push_back({title, url});
    LinkTable t = Table(links);
    t.Tidy();
    std::string tidied;
    for (int i = 0; i < t.count; ++i) tidied += (i ? "|" : "") + t.entries[i].title + ">" + t.entries[i].url;
    EXPECT_EQ(tidied, r[1]) << r.where;
    for (int i = t.count; i < LinkTable::kCapacity; ++i)
      EXPECT_TRUE(t.entries[i].title.empty() && t.entries[i].url.empty()) << r.where;
  }
}

TEST(LinkTable, EditorOperations) {
  LinkTable t = Table({{"Bravo", "b"}, {"Delta", "d"}});
  EXPECT_EQ(t.Add({"Charlie", "c"}), 1);
  EXPECT_EQ(t.Add({"  ", "blank"}), -1);  // a blank title is not added
  EXPECT_EQ(t.Add({" alpha ", "a"}), 0);
  EXPECT_EQ(t.entries[0].title, "alpha");
  EXPECT_EQ(t.Replace(0, {"Echo", "e"}), 3);  // edited entry moves to its sorted place
  EXPECT_EQ(Urls(t), (std::vector<std::string>{"b", "c", "d", "e"}));
  EXPECT_EQ(t.Replace(1, {"", "gone"}), -1);  // blanking a title drops the entry
  EXPECT_EQ(Urls(t), (std::vector<std::string>{"b", "d", "e"}));
  EXPECT_EQ(t.Replace(7, {"X", "x"}), -1);
  t.Remove(0);
  t.Remove(5);
  EXPECT_EQ(Urls(t), (std::vector<std::string>{"d", "e"}));

  // Equal titles: the position returned is the entry's own.
  LinkTable same = Table({{"Wx", "1"}, {"Wx", "2"}});
  EXPECT_EQ(same.Add({"WX", "3"}), 2);
  EXPECT_EQ(same.Replace(0, {"wx", "1b"}), 0);

  // Fifteen entries at most; a delete makes room again.
  LinkTable full;
  for (int i = 0; i < LinkTable::kCapacity; ++i) EXPECT_GE(full.Add({"Link " + std::to_string(100 + i), "u"}), 0);
  EXPECT_TRUE(full.Full());
  EXPECT_EQ(full.Add({"One too many", "u"}), -1);
  EXPECT_EQ(full.count, 15);
  full.Remove(3);
  EXPECT_FALSE(full.Full());
  EXPECT_EQ(full.Add({"One too many", "u"}), 14);
}

}  // namespace
}  // namespace norvane

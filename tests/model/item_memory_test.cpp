// Items share a memory of their own. These cases fail when two items get the same place, when a place is lost or handed
// out too early, and when an item that does not fit is squeezed in.
#include <cstdint>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <scenario/ItemModel.h>

namespace {

// Larger than anything that the library makes, and aligned more strictly.
class WideItem : public Folders {
public:
    char bytes[5000] = {};
};
class AlignedItem : public Folders {
public:
    alignas(64) double lane[8] = {};
};

constexpr std::uint32_t kKinds[] = {KindFolder, KindParameter, KindVariable, KindAction,   KindConfig,
                                    KindRule,   KindTask,      KindScenario, KindCriteria, KindGeneralParameters};

std::unique_ptr<ScenarioItem> Make(std::uint32_t number) {
    const std::string name = "item number " + std::to_string(number);
    if (number % 97 == 0) {
        auto item = std::make_unique<WideItem>();
        item->name = name;
        return item;
    }
    if (number % 89 == 0) {
        auto item = std::make_unique<AlignedItem>();
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(item->lane) % 64, 0U);
        item->name = name;
        return item;
    }
    return std::unique_ptr<ScenarioItem>(CreateItem(kKinds[number % std::size(kKinds)], name, nullptr));
}

TEST(ItemMemoryTest, ItemsKeepWhatTheyHoldWhileOthersComeAndGo) {
    std::mt19937 random(7);
    std::vector<std::pair<std::uint32_t, std::unique_ptr<ScenarioItem>>> items;
    std::uint32_t number = 0;
    // Grows beyond several regions, shrinks to nothing, and grows again: places are used a second time in another
    // order.
    for (const std::size_t wanted : {20000U, 100U, 15000U, 0U, 20000U}) {
        while (items.size() < wanted) {
            ++number;
            items.emplace_back(number, Make(number));
        }
        while (items.size() > wanted) {
            std::swap(items[random() % items.size()], items.back());
            ASSERT_EQ(items.back().second->name, "item number " + std::to_string(items.back().first));
            items.pop_back();
        }
    }
    for (const auto& [made, item] : items) ASSERT_EQ(item->name, "item number " + std::to_string(made));
}

// Each form of new ends in the one form of delete, so all must take from the memory that it gives back to.
TEST(ItemMemoryTest, EveryFormOfNewFitsDelete) {
    for (int i = 0; i < 1000; ++i) {
        const std::unique_ptr<ScenarioItem> small(new (std::nothrow) Task);
        const std::unique_ptr<ScenarioItem> wide(new (std::nothrow) WideItem);
        const std::unique_ptr<AlignedItem> aligned(new (std::nothrow) AlignedItem);
        ASSERT_TRUE(small && wide && aligned);
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(aligned->lane) % 64, 0U);
    }
}

} // namespace

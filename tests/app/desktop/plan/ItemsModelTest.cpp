// SPDX-License-Identifier: MIT
#include "app/desktop/plan/ItemsModel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

namespace dorvanel::test {
namespace {

using desktop::ItemsModel;

class ItemsModelTest : public ::testing::Test {
  protected:
    QString text(int row, int column) { return model.index(row, column).data().toString(); }
    static std::shared_ptr<ItemsModel::Items> items(const std::vector<std::string>& paths) {
        auto made = std::make_shared<ItemsModel::Items>();
        for (const std::string& path : paths) made->emplace_back().path = path;
        return made;
    }

    ItemsModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(ItemsModelTest, NamesAreThereAtOnceAndSizesWhenTheyAreKnown) {
    model.showPaths(std::make_shared<const ItemsModel::Paths>(
        ItemsModel::Paths{"/x/one", "/x/folder/", "/x/a\nb"}));
    EXPECT_EQ(text(0, ItemsModel::nameColumn), "one");
    EXPECT_EQ(text(1, ItemsModel::nameColumn), "folder");
    EXPECT_EQ(text(2, ItemsModel::nameColumn), QString("a") + QChar::ReplacementCharacter + "b");
    EXPECT_EQ(text(0, ItemsModel::sizeColumn), "…");

    model.showItems(items({"/x/one", "/x/folder", "/x/folder/inside"}));
    EXPECT_EQ(text(1, ItemsModel::sizeColumn), "…");
    model.add({{.row = 1, .files = 2, .bytes = 2048, .notes = 0}});
    EXPECT_EQ(text(1, ItemsModel::sizeColumn), "2.00 KiB");
    EXPECT_EQ(text(0, ItemsModel::sizeColumn), "…");
    model.add({{.row = 0, .files = 1, .bytes = 0, .notes = 0}});
    model.setComplete();
    EXPECT_EQ(text(0, ItemsModel::sizeColumn), "0 bytes");
    EXPECT_EQ(text(2, ItemsModel::sizeColumn), "") << "it goes with its folder";
    EXPECT_EQ(model.index(0, 0).data(Qt::ToolTipRole).toString(), "/x/one");
}

TEST_F(ItemsModelTest, NotesAreToldInWords) {
    model.showItems(items({"/x/one", "/x/two"}));
    PlanItem item;
    item.notes = {{.kind = PlanNote::Kind::hardLink, .path = "/x/two"},
                  {.kind = PlanNote::Kind::open, .path = "/x/two"}};
    model.add({{.row = 1, .files = 1, .bytes = 1, .notes = desktop::noteBits(item)}});
    EXPECT_EQ(text(1, ItemsModel::notesColumn),
              "Other names show what is written; Open in another program");
    EXPECT_EQ(text(0, ItemsModel::notesColumn), "");
    model.add({{.row = 7, .files = 1, .bytes = 1, .notes = 0}});
    EXPECT_EQ(model.rowCount(), 2);
}

}  // namespace
}  // namespace dorvanel::test

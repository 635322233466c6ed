#include "data/Demo.h"

#include <QSet>
#include <gtest/gtest.h>
#include <set>
#include <tuple>

// The benchmark's workload: the announced sizes, the same school for the
// same seed, and a saved-work snapshot that covers every cell of the grid.
TEST(GeneratedSchoolTest, HasTheAnnouncedSizesAndASnapshotOfEveryCell)
{
    const InstallationDescription school = GeneratedSchool({});
    ASSERT_EQ(school.years.size(), 3);
    QSet<int> students;
    QSet<QPair<int, int>> pairs;
    std::set<std::tuple<int, int, int, int>> cells;
    int enrolments = 0;
    for (const YearDescription &year : school.years) {
        EXPECT_EQ(year.activities.size(), 8) << year.name.toStdString();
        for (const StudentDescription &student : year.students)
            students.insert(student.id);
        for (const EnrolmentDescription &e : year.enrolments) {
            pairs.insert({e.student, e.payer});
            cells.insert({year.id, e.activity, e.student, e.payer});
        }
        enrolments += year.enrolments.size();
    }
    EXPECT_EQ(students.size(), 3000);
    EXPECT_NEAR(pairs.size(), 4500, 900);
    EXPECT_NEAR(enrolments, 36000, 5000);
    EXPECT_EQ(QStringList({school.years[0].name, school.years[2].name}), QStringList({"2023-2024", "2025-2026"}));

    EXPECT_EQ(school.savedWork.activities.size(), 24);
    EXPECT_EQ(school.savedWork.donors.size(), pairs.size());
    std::set<std::tuple<int, int, int, int>> saved;
    for (const SavedPayment &p : school.savedWork.payments)
        saved.insert({p.idCC, p.idAct, p.idAL, p.idMF});
    EXPECT_EQ(saved, cells);
    EXPECT_EQ(school.savedWork.payments.size(), cells.size());

    const InstallationDescription again = GeneratedSchool({});
    EXPECT_EQ(again.years[1].enrolments.size(), school.years[1].enrolments.size());
    EXPECT_EQ(again.years[1].members.at(7).dni, school.years[1].members.at(7).dni);
    SchoolSize other;
    other.seed = 7;
    other.students = 100;
    other.years = 1;
    other.activities = 2;
    other.savedWork = false;
    const InstallationDescription small = GeneratedSchool(other);
    EXPECT_EQ(small.years.size(), 1);
    EXPECT_EQ(small.years[0].students.size(), 100);
    EXPECT_EQ(small.years[0].activities.size(), 2);
    EXPECT_TRUE(small.savedWork.payments.isEmpty());
}

// The suite's window: who works, what to open, and what came back.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QWidget>
#include <vector>

#include "suite.h"

class QGridLayout;

namespace orvenmod::sample {

class SuiteWindow : public QWidget {
public:
    explicit SuiteWindow(const Suite& suite);

    /// Opens the component and shows what it left; for the buttons and for the tour.
    void open(const Request& request);
    /// Opens the designer of classes.
    void designClasses();
    /// Opens the dictionaries.
    void keepDictionaries();
    /// Picks an entry of a dictionary and shows what came back.
    void pickDictionary(std::int16_t dictionary);
    /// Works as the user of that number in the list.
    void logInAs(int index);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* makeHead();
    QWidget* makeChoices();
    QWidget* makeOwnClasses();
    QWidget* makeResults();
    void fillOwnClasses();
    void addButton(QGridLayout* grid, int row, int column, const QString& caption, const Request& request);
    Request withChoices(Request request) const;
    void showResult(const Result& result);

    const Suite& suite_;
    std::vector<SuiteUser> users_;
    std::vector<Warehouse> warehouses_;
    QComboBox* user_ = nullptr;
    QComboBox* warehouse_ = nullptr;
    QComboBox* stockChoice_ = nullptr;
    QLineEdit* find_ = nullptr;
    QComboBox* ownClass_ = nullptr;
    QPushButton* openOwn_ = nullptr;
    QTableWidget* properties_ = nullptr;
    QTableWidget* billRows_ = nullptr;
    QLabel* outcome_ = nullptr;
};

}  // namespace orvenmod::sample

#include "tools/frmFileCompare.h"

#include <QAction>
#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPointer>
#include <QScrollBar>
#include <algorithm>
#include <numeric>
#include <utility>

#include "forms/FileDialog.h"
#include "forms/FormParts.h"
#include "forms/Hourglass.h"
#include "forms/MsgBox.h"
#include "image/modBinFileInfo.h"
#include "job/CompareTexts.h"
#include "tools/DifferencesModel.h"
#include "ui_frmFileCompare.h"

namespace burnwick {

namespace {

std::string LowerCase(const std::string& text) {
    return QString::fromStdString(text).toLower().toStdString();
}

// The width of a list of which all columns are seen whole. The last two share their room evenly.
int WidthOf(const QTableView& list) {
    const auto column = [&list](int index) {
        const QAbstractItemView& view = list;
        return std::max(view.sizeHintForColumn(index), list.horizontalHeader()->sectionSizeHint(index));
    };
    return column(0) + column(1) + 2 * std::max(column(2), column(3)) + 2 * list.frameWidth()
           + list.verticalScrollBar()->sizeHint().width();
}

}  // namespace

frmFileCompare::frmFileCompare(Services services, QWidget* parent)
    : PlacedDialog(parent),
      Services_(std::move(services)),
      Ui_(std::make_unique<Ui::frmFileCompare>()),
      Differences_(new DifferencesModel(this)) {
    Ui_->setupUi(this);
    NameControls(*this);
    SetUpDifferences();
    connect(Ui_->txtFile1, &QLineEdit::textChanged, this, &frmFileCompare::txtFile_Change);
    connect(Ui_->txtFile2, &QLineEdit::textChanged, this, &frmFileCompare::txtFile_Change);
    connect(Ui_->cmdFile1, &QPushButton::clicked, this, &frmFileCompare::cmdFile1_Click);
    connect(Ui_->cmdFile2, &QPushButton::clicked, this, &frmFileCompare::cmdFile2_Click);
    connect(Ui_->cmdCompare, &QPushButton::clicked, this, &frmFileCompare::cmdCompare_Click);
    connect(Ui_->cmdClose, &QPushButton::clicked, this, &frmFileCompare::cmdClose_Click);
    connect(Ui_->cmdDifferences, &QToolButton::toggled, this, &frmFileCompare::cmdDifferences_Toggle);
    connect(Ui_->cmdCopy, &QPushButton::clicked, this, &frmFileCompare::cmdCopy_Click);
}

frmFileCompare::~frmFileCompare() = default;

void frmFileCompare::SetUpDifferences() {
    QTableView& list = *Ui_->grdDifferences;
    list.setModel(Differences_);
    const QFontMetrics digits(QFontDatabase::systemFont(QFontDatabase::FixedFont), &list);
    QHeaderView& columns = *list.horizontalHeader();
    columns.setMinimumSectionSize(digits.horizontalAdvance("00000000  "));
    columns.setSectionResizeMode(QHeaderView::Stretch);
    columns.setSectionResizeMode(0, QHeaderView::ResizeToContents);
    columns.setSectionResizeMode(1, QHeaderView::ResizeToContents);
    list.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    list.verticalHeader()->setDefaultSectionSize(digits.height() + 2);

    auto* const copy = new QAction("Copy", &list);
    copy->setShortcut(QKeySequence::Copy);
    auto* const selectAll = new QAction("Select All", &list);
    selectAll->setShortcut(QKeySequence::SelectAll);
    for (QAction* const action : {copy, selectAll}) {
        action->setShortcutContext(Qt::WidgetShortcut);
        list.addAction(action);
    }
    connect(copy, &QAction::triggered, this, &frmFileCompare::cmdCopy_Click);
    connect(selectAll, &QAction::triggered, &list, &QTableView::selectAll);
    Ui_->fraDifferences->hide();
}

void frmFileCompare::done(int result) {
    IsClosed_ = true;
    QDialog::done(result);
}

void frmFileCompare::cmdFile1_Click() {
    SelectFile("Select File 1", *Ui_->txtFile1);
}

void frmFileCompare::cmdFile2_Click() {
    SelectFile("Select File 2", *Ui_->txtFile2);
}

void frmFileCompare::SelectFile(const std::string& title, QLineEdit& file) {
    const std::string chosen = AskForFileToOpen(this, title, "Binary File (*.Bin)", Services_.Folder);
    if (!chosen.empty()) {
        file.setText(QString::fromStdString(chosen));
    }
    Ui_->cmdCompare->setEnabled(BothFilesAreNamed());
    if (!chosen.empty() && Ui_->cmdCompare->isEnabled()) {
        Ui_->cmdCompare->setFocus();
    }
}

// What the dialog shows is about the files that were compared, and these are others.
void frmFileCompare::txtFile_Change() {
    ShowText(*Ui_->lblStatus, IdleStatus);
    ShowDifferences({});
    if (!IsComparing_ && BothFilesAreNamed()) {
        Ui_->cmdCompare->setEnabled(true);
    }
}

bool frmFileCompare::BothFilesAreNamed() const {
    return !Ui_->txtFile1->text().isEmpty() && !Ui_->txtFile2->text().isEmpty();
}

void frmFileCompare::cmdCompare_Click() {
    const std::string file1 = Ui_->txtFile1->text().toStdString();
    const std::string file2 = Ui_->txtFile2->text().toStdString();
    const auto refusal = RefuseComparison(file1, file2, LowerCase);
    if (!refusal) {
        Compare(file1, file2);
        return;
    }
    ShowDifferences({});
    MsgBox(this, QMessageBox::Information, refusal->Box);
    ShowText(*Ui_->lblStatus, refusal->Status);
    QLineEdit& file = refusal->File == 1 ? *Ui_->txtFile1 : *Ui_->txtFile2;
    file.setFocus();
    file.selectAll();
}

// Events are handled meanwhile: the dialog may be closed then, or be gone altogether.
void frmFileCompare::Compare(const std::string& file1, const std::string& file2) {
    const QPointer<frmFileCompare> here(this);
    const QPointer<QWidget> focused(focusWidget());
    const auto goesOn = [&here] {
        QCoreApplication::processEvents();
        return here && !here->IsClosed_;
    };
    std::int32_t differences = 0;
    modBinFileInfo::DifferingRanges ranges;
    std::string compared;
    // Not to a button that would then take the next Enter.
    Ui_->lblStatus->setFocus();
    SetComparing(true);
    {
        const Hourglass hourglass;
        compared = modBinFileInfo::CompareImages(file1, file2, differences, goesOn, &ranges);
        if (here) {
            SetComparing(false);
        }
    }
    if (!here) {
        return;
    }
    if (IsClosed_) {
        ShowText(*Ui_->lblStatus, IdleStatus);
        return;
    }
    if (focused) {
        focused->setFocus();
    }
    Services_.Beep();
    ShowText(*Ui_->lblStatus, CompareStatus(compared, differences));
    ShowDifferences(std::move(ranges));
}

void frmFileCompare::SetComparing(bool comparing) {
    IsComparing_ = comparing;
    if (comparing) {
        IsClosed_ = false;
        ShowText(*Ui_->lblStatus, ComparingStatus);
    }
    Ui_->cmdCompare->setEnabled(!comparing);
    Ui_->Frame1->setEnabled(!comparing);
    Ui_->fraDifferences->setEnabled(!comparing);
}

void frmFileCompare::cmdClose_Click() {
    close();
}

void frmFileCompare::ShowDifferences(modBinFileInfo::DifferingRanges ranges) {
    const bool some = !ranges.Kept().empty();
    ShowText(*Ui_->lblRanges, RangesCaption(ranges));
    Differences_->SetRanges(std::move(ranges));
    Ui_->cmdDifferences->setEnabled(some);
    if (!some) {
        Ui_->cmdDifferences->setChecked(false);
    }
}

void frmFileCompare::cmdDifferences_Toggle(bool shown) {
    Ui_->cmdDifferences->setArrowType(shown ? Qt::DownArrow : Qt::RightArrow);
    Ui_->fraDifferences->setVisible(shown);
    MakeRoomForDifferences(shown);
}

// The dialog grows by the list, as wide as its bytes need it and as far as the screen goes, and back.
void frmFileCompare::MakeRoomForDifferences(bool shown) {
    layout()->activate();
    if (!shown) {
        resize(width() - std::exchange(WidthForList_, 0), sizeHint().height());
        return;
    }
    const QRect screen = ScreenOf(*this);
    const QSize most = screen.size() - (frameGeometry().size() - size());
    const QMargins margins = layout()->contentsMargins();
    const int wanted = WidthOf(*Ui_->grdDifferences) + margins.left() + margins.right();
    const int before = width();
    resize(QSize(std::max(before, wanted), sizeHint().height()).boundedTo(most));
    WidthForList_ = width() - before;
    const QRect place = frameGeometry();
    move(x() - std::clamp(place.right() - screen.right(), 0, std::max(0, place.left() - screen.left())),
         y() - std::clamp(place.bottom() - screen.bottom(), 0, std::max(0, place.top() - screen.top())));
}

void frmFileCompare::cmdCopy_Click() {
    QList<int> rows;
    for (const QModelIndex& index : Ui_->grdDifferences->selectionModel()->selectedRows()) {
        rows.append(index.row());
    }
    std::sort(rows.begin(), rows.end());
    if (rows.isEmpty()) {
        rows.resize(Differences_->rowCount());
        std::iota(rows.begin(), rows.end(), 0);
    }
    QGuiApplication::clipboard()->setText(Differences_->AsText(rows));
}

}  // namespace burnwick

#pragma once
// frmData17 "Airport weather": the latest METAR report or TAF forecast of an airport, fetched
// from the weather server while the window stays responsive.

#include <string>

#include "app/CalculatorScreen.hpp"

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

namespace norvane {

class UrlTransfer;

class WeatherScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit WeatherScreen(QWidget* parent = nullptr);

  bool busy() const;
  void prepareScreenshot() override;

 protected:
  void boxEdited(int index) override;

 private:
  void getWeather();
  void cancelFetch();
  void showResult(int code);
  void setWeatherText(const QString& text, const QColor& colour);

  InputBox* inboxICAO_;
  QRadioButton* optW_[2];
  QPushButton* cmdGetWeather_;
  QPushButton* cmdCancel_;
  QLabel* lblR_;
  QPlainTextEdit* textWeather_;
  UrlTransfer* transfer_ = nullptr;
  std::string reply_;
};

}  // namespace norvane

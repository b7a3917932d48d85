#include <cstdio>
#include <thread>
#include "app/Workstation.h"
#include "engine/SoundEngine.h"
#include "engine/NullDevice.h"
#include "platform/codec/FfmpegDecoderFactory.h"
#include "platform/files/DiskFileSaver.h"
#include "platform/stretch/LibraryStretcherFactory.h"
#include "platform/tags/TagLibTagReader.h"
#include "support/testing/MemorySettings.h"
using namespace std::chrono_literals;
struct Two : engine::OutputDevices {
  std::vector<engine::OutputDeviceInfo> List() override { using S=engine::Speaker; return {{"m","Main",{S::FrontLeft,S::FrontRight},true},{"p","Phones",{S::FrontLeft,S::FrontRight},false}}; }
  support::Result<std::unique_ptr<engine::OutputDevice>> Open(const engine::OutputRequest& r, engine::RenderSource& s) override {
    std::this_thread::sleep_for(150ms);
    for (auto& i : List()) if (i.id==r.id) return std::unique_ptr<engine::OutputDevice>(std::make_unique<engine::NullDevice>(i,r,s,nullptr));
    return support::Error{support::ErrorCode::NotFound,"no"};
  }
  void OnChange(std::function<void()>) override {}
};
int main(){
  support::SteadyClock clock; platform::files::DiskFileSaver files; support::testing::MemorySettings settings; platform::tags::TagLibTagReader tags; Two outputs; platform::codec::FfmpegDecoderFactory dec; platform::stretch::LibraryStretcherFactory st; support::ThreadPool decoding(2);
  engine::SoundEngine eng({.outputs=outputs,.decoders=dec,.stretchers=st,.workers=decoding,.clock=clock,.memory=nullptr,.make_silent=nullptr,.thread_started=nullptr}, engine::SoundEngine::Feeding::OwnThread);
  support::ThreadPool workers(2);
  app::Workstation w({eng,eng,tags,settings,files,workers,clock}, support::ProgramFolder("/tmp/core/pf"), app::Workstation::Conducting::OwnThread);
  std::filesystem::create_directories("/tmp/core/pf");
  w.StartUp();
  bool added=false; w.AddFiles({"/tmp/core/m/a.mp3","/tmp/core/m/a.flac","/tmp/core/m/a.wma","/tmp/core/m/none.mp3"},[&](int n, auto r){ printf("added %d refused %zu %s\n",n,r.size(), r.empty()?"":r[0].c_str()); added=true;});
  while(!added){ w.PumpWindow(); std::this_thread::sleep_for(5ms);} 
  auto show=[&](const char* what,int d=1){ const auto& v=w.View().decks[d-1]; const char* s[]={"Empty","Loading","Stopped","Playing","Paused","Ended"}; printf("%-26s %-8s pos %.3f len %.3f L %.1f R %.1f msg '%s' notice '%s' late %llu\n",what,s[(int)v.state],v.position.count()/1e6,v.length.count()/1e6,v.left_db,v.right_db,v.message.c_str(),w.View().notice.c_str(),(unsigned long long)w.View().health.late_blocks); };
  auto wait=[&](auto d){ std::this_thread::sleep_for(d); };
  auto& t=w.Catalogue(); auto row=[&](const char* p){ return t.FindRow(4,p); };
  w.LoadDeck(1,t,row("/tmp/core/m/a.mp3")); wait(500ms); show("loaded mp3");
  w.Play(1); wait(1000ms); show("play 1 s");
  w.SetOutput(3,{2,0}); wait(500ms); show("phones on 2");
  w.SetPreVolume(1,70);
  w.SetOutput(1,{2,1}); wait(500ms); show("moved to 2 front");
  w.Pause(1); wait(300ms); show("paused"); w.Resume(1); wait(300ms); show("resumed");
  w.SetOutput(1,{1,0}); w.SetOutput(3,{0,0}); wait(300ms); show("moved back, no phones");
  w.Stop(1); wait(100ms); show("stopped"); w.Play(1); wait(500ms); show("played again");
  w.Seek(1,3500ms); wait(300ms); show("seek 3.5"); wait(700ms); show("ended"); w.Play(1); wait(400ms); show("play after end");
  w.LoadDeck(1,t,row("/tmp/core/m/a.flac")); wait(200ms); show("flac over playing"); w.SetTempo(1,8); w.Play(1); wait(1000ms); show("flac +8 1 s");
  w.SetOutput(3,{2,0}); wait(300ms); show("phones again"); w.Stop(1); wait(100ms); w.Play(1); wait(300ms); show("flac with phones");
  w.LoadDeck(2,t,row("/tmp/core/m/a.wma")); w.Play(2); wait(600ms); show("wma deck 2",2);
  std::filesystem::remove("/tmp/core/m/a.wma"); w.SetOutput(2,{2,0}); wait(400ms); show("wma removed, moved",2);
  auto t0=clock.Now(); w.ShutDown(); printf("shutdown %.1f ms\n", std::chrono::duration<double>(clock.Now()-t0).count()*1e3);
}

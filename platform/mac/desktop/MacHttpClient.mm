#include "platform/mac/desktop/MacHttpClient.h"

#import <Foundation/Foundation.h>

#include <memory>
#include <utility>

#include "platform/mac/system/Conversions.h"

namespace {

using Answer = std::function<void(std::optional<std::string>)>;

bool hasScheme(NSURL* url, NSString* scheme) {
  return url.scheme != nil && [url.scheme caseInsensitiveCompare:scheme] == NSOrderedSame;
}

// A session would also read files.
bool isOfTheWeb(NSURL* url) {
  return hasScheme(url, @"https") || hasScheme(url, @"http");
}

bool sendsOn(NSURLResponse* response) {
  if (![response isKindOfClass:NSHTTPURLResponse.class]) return false;
  NSHTTPURLResponse* answer = static_cast<NSHTTPURLResponse*>(response);
  return answer.statusCode / 100 == 3 && [answer valueForHTTPHeaderField:@"Location"] != nil;
}

}  // namespace

// Takes in one answer, on the session's own queue.
@interface AnswerTaker : NSObject <NSURLSessionDataDelegate>

- (instancetype)initWithLargestBody:(std::size_t)largestBody answer:(Answer)answer;

@end

@implementation AnswerTaker {
  std::size_t _largestBody;
  std::string _body;
  Answer _answer;
}

- (instancetype)initWithLargestBody:(std::size_t)largestBody answer:(Answer)answer {
  self = [super init];
  if (self != nil) {
    _largestBody = largestBody;
    _answer = std::move(answer);
  }
  return self;
}

- (void)URLSession:(NSURLSession*)session dataTask:(NSURLSessionDataTask*)task didReceiveData:(NSData*)data {
  if (data.length > _largestBody - _body.size()) {
    // Ends below, with an error.
    [task cancel];
    return;
  }
  // What came in pieces stays in pieces until it is asked for.
  [data enumerateByteRangesUsingBlock:^(const void* bytes, NSRange range, BOOL*) {
    self->_body.append(static_cast<const char*>(bytes), range.length);
  }];
}

// Follows where it is sent, but not out of the web, nor from an encrypted connection to an open one.
- (void)URLSession:(NSURLSession*)session
                          task:(NSURLSessionTask*)task
    willPerformHTTPRedirection:(NSHTTPURLResponse*)response
                    newRequest:(NSURLRequest*)request
             completionHandler:(void (^)(NSURLRequest*))handler {
  const bool lessSafe = hasScheme(response.URL, @"https") && !hasScheme(request.URL, @"https");
  handler(isOfTheWeb(request.URL) && !lessSafe ? request : nil);
}

// What still sends on here was not followed, by us or by the system: no answer. Ends below, with an error.
- (void)URLSession:(NSURLSession*)session
              dataTask:(NSURLSessionDataTask*)task
    didReceiveResponse:(NSURLResponse*)response
     completionHandler:(void (^)(NSURLSessionResponseDisposition))handler {
  handler(sendsOn(response) ? NSURLSessionResponseCancel : NSURLSessionResponseAllow);
}

// Also after -cancel. A body shorter than its announced length is an error as well.
- (void)URLSession:(NSURLSession*)session task:(NSURLSessionTask*)task didCompleteWithError:(NSError*)error {
  const auto answer = std::exchange(_answer, nullptr);
  if (!answer) return;
  if (error != nil) {
    answer(std::nullopt);
  } else {
    answer(std::move(_body));
  }
}

@end

namespace pellar {
namespace {

// Null for an address that is none of the web's.
NSURL* webUrl(const std::string& text) {
  NSURL* url = [NSURL URLWithString:toNSString(text)];
  return isOfTheWeb(url) ? url : nil;
}

}  // namespace

Subscription MacHttpClient::get(const HttpRequest& request, Reply reply) {
  // Touched on the main thread only.
  const auto waiting = std::make_shared<Reply>(std::move(reply));
  const auto key = door_.key();
  const Answer answer = [waiting, key](std::optional<std::string> body) {
    key.post([waiting, body = std::move(body)]() mutable {
      if (const auto told = std::exchange(*waiting, nullptr)) told(std::move(body));
    });
  };
  NSURL* url = webUrl(request.url);
  if (url == nil) {
    answer(std::nullopt);
    return Subscription([waiting] { *waiting = nullptr; });
  }
  const NSTimeInterval seconds = std::chrono::duration<double>(request.timeout).count();
  NSURLSessionConfiguration* configuration = NSURLSessionConfiguration.defaultSessionConfiguration;
  // A request's own limit starts anew with each piece of the answer; this one does not.
  configuration.timeoutIntervalForResource = seconds;
  AnswerTaker* taker = [[AnswerTaker alloc] initWithLargestBody:request.largestBody answer:answer];
  NSURLSession* session = [NSURLSession sessionWithConfiguration:configuration
                                                        delegate:taker
                                                   delegateQueue:nil];
  NSMutableURLRequest* native = [NSMutableURLRequest requestWithURL:url];
  native.timeoutInterval = seconds;
  NSURLSessionDataTask* task = [session dataTaskWithRequest:native];
  [task resume];
  // A session keeps its delegate, and itself, until it is invalidated.
  [session finishTasksAndInvalidate];
  return Subscription([waiting, task] {
    *waiting = nullptr;
    [task cancel];
  });
}

}  // namespace pellar

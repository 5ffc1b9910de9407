#ifndef WorkerPool_H
#define WorkerPool_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/** What became of a task. */
struct TaskResult {
    bool isDone = false;                ///< whether all went well
    std::vector<std::string> messages;  ///< what the user should know; why, when it did not go well
    std::string death;                  ///< how the process ended that should have done it, in words; empty as a rule
};

/**
 * Carries out tasks in processes of their own, so that one that crashes takes no other with it.
 *
 * The processes are copies of this one as it is at the call. One that dies is told as the result of its task, and
 * another takes its place.
 *
 * @param iCount the number of tasks
 * @param iProcesses how many of them run at a time, at least 1
 * @param iTask does a task, by its number from 0, in one of the processes; throws nothing
 * @param iFinished gets each result in this process, in the order in which the tasks end
 */
void RunTasks(std::size_t iCount, int iProcesses, const std::function<TaskResult(std::size_t)>& iTask,
              const std::function<void(std::size_t, TaskResult)>& iFinished);

#endif
